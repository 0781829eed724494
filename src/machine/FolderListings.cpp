#include "machine/FolderListings.h"

#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <tuple>

#include "machine/CaseFold.h"
#include "machine/CodePage.h"

namespace zelvreg::machine {

namespace {

// The root of this system is written as the empty text.
const char* nameOf(const std::string& folder) { return folder.empty() ? "/" : folder.c_str(); }

NameKind kindOf(int folder, const dirent& entry) {
  switch (entry.d_type) {
    case DT_REG:
      return NameKind::File;
    case DT_DIR:
      return NameKind::Folder;
    case DT_LNK:
      return NameKind::Link;
    case DT_UNKNOWN:
      break;
    default:
      return NameKind::Other;
  }
  // Some file systems do not say the kind in the listing.
  struct stat status {};
  if (fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) return NameKind::Other;
  if (S_ISREG(status.st_mode)) return NameKind::File;
  if (S_ISDIR(status.st_mode)) return NameKind::Folder;
  return S_ISLNK(status.st_mode) ? NameKind::Link : NameKind::Other;
}

bool readNames(const std::string& folder, std::vector<ListedName>& names) {
  const auto closeFolder = [](DIR* open) { closedir(open); };
  const std::unique_ptr<DIR, decltype(closeFolder)> open(opendir(nameOf(folder)), closeFolder);
  if (open == nullptr) return false;
  errno = 0;
  while (const dirent* entry = readdir(open.get())) {
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    names.push_back(
        {upperCase(utf16FromUtf8(name)), std::string(name), kindOf(dirfd(open.get()), *entry)});
    errno = 0;
  }
  const bool complete = errno == 0;
  std::sort(names.begin(), names.end(), [](const ListedName& first, const ListedName& second) {
    return std::tie(first.upper, first.name) < std::tie(second.upper, second.name);
  });
  return complete;
}

}  // namespace

FolderListings::Listing& FolderListings::current(const std::string& folder) {
  Listing& listing = listings[folder];
  struct stat status {};
  if (stat(nameOf(folder), &status) != 0) {
    listing = {};
    return listing;
  }
  const bool same = listing.readable && listing.device == status.st_dev &&
                    listing.inode == status.st_ino &&
                    listing.changed.tv_sec == status.st_mtim.tv_sec &&
                    listing.changed.tv_nsec == status.st_mtim.tv_nsec;
  if (same) return listing;
  // The time is taken before the names, so that a change in between is seen the next time.
  listing = {status.st_dev, status.st_ino, status.st_mtim, false, {}};
  listing.readable = readNames(folder, listing.names);
  return listing;
}

const ListedName* FolderListings::find(const std::string& folder, std::u16string_view upper,
                                       std::u16string_view name) {
  const std::vector<ListedName>& names = current(folder).names;
  const auto first = std::lower_bound(
      names.begin(), names.end(), upper,
      [](const ListedName& listed, std::u16string_view wanted) { return listed.upper < wanted; });
  const auto last = std::find_if(
      first, names.end(), [upper](const ListedName& listed) { return listed.upper != upper; });
  if (first == last) return nullptr;
  if (last - first == 1) return &*first;
  const auto exact = std::find_if(
      first, last,
      [written = utf8FromUtf16(name)](const ListedName& listed) { return listed.name == written; });
  return exact == last ? &*first : &*exact;
}

const std::vector<ListedName>& FolderListings::all(const std::string& folder) {
  return current(folder).names;
}

bool FolderListings::isReadable(const std::string& folder) const {
  const auto found = listings.find(folder);
  return found != listings.end() && found->second.readable;
}

}  // namespace zelvreg::machine
