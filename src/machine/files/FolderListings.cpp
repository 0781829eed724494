#include "machine/files/FolderListings.h"

#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <memory>
#include <tuple>
#include <utility>

#include "machine/base/CaseFold.h"
#include "machine/base/HostName.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {

namespace {

// The root of this system is written as the empty text.
const char* nameOf(const std::string& folder) { return folder.empty() ? "/" : folder.c_str(); }

bool isSameTime(const timespec& first, const timespec& second) {
  return first.tv_sec == second.tv_sec && first.tv_nsec == second.tv_nsec;
}

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

struct ReadNames {
  ListedNames names;
  bool isComplete = false;
  bool hasForeignNames = false;
};

ReadNames readNames(const std::string& folder) {
  ReadNames read;
  const auto closeFolder = [](DIR* open) { closedir(open); };
  const std::unique_ptr<DIR, decltype(closeFolder)> open(opendir(nameOf(folder)), closeFolder);
  if (open == nullptr) return read;
  errno = 0;
  while (const dirent* entry = readdir(open.get())) {
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    if (const auto wide = windowsName(name)) {
      read.names.push_back(
          {upperCase(*wide), std::string(name), kindOf(dirfd(open.get()), *entry)});
    } else {
      read.hasForeignNames = true;
    }
    errno = 0;
  }
  read.isComplete = errno == 0;
  std::sort(read.names.begin(), read.names.end(),
            [](const ListedName& first, const ListedName& second) {
              return std::tie(first.upper, first.name) < std::tie(second.upper, second.name);
            });
  for (std::size_t next = 1; next < read.names.size(); ++next) {
    ListedName& name = read.names[next - 1];
    ListedName& other = read.names[next];
    if (name.upper == other.upper) name.hasTwin = other.hasTwin = true;
  }
  return read;
}

}  // namespace

const FolderListings::Listing* FolderListings::known(const std::string& folder) const {
  if (isLast(folder)) return &last->second;
  const auto found = listings.find(folder);
  return found == listings.end() ? nullptr : &found->second;
}

FolderListings::Listing& FolderListings::current(const std::string& folder) {
  if (!isLast(folder)) last = &*listings.try_emplace(folder).first;
  Listing& listing = last->second;
  timespec tick{};
  if (freshness == Freshness::ToTheTick) {
    clock_gettime(CLOCK_MONOTONIC_COARSE, &tick);
    if (listing.readable && isSameTime(listing.lookedAt, tick)) return listing;
  }
  struct stat status {};
  if (stat(nameOf(folder), &status) != 0) {
    ++readings;
    listing = {};
    listing.names = std::make_shared<const ListedNames>();
    return listing;
  }
  const bool same = listing.readable && listing.device == status.st_dev &&
                    listing.inode == status.st_ino && isSameTime(listing.changed, status.st_mtim);
  listing.lookedAt = tick;
  if (same) return listing;
  ++readings;
  // The time is taken before the names, so that a change in between is seen the next time.
  listing = {status.st_dev, status.st_ino, status.st_mtim, tick, false, false, nullptr};
  ReadNames read = readNames(folder);
  listing.names = std::make_shared<const ListedNames>(std::move(read.names));
  listing.readable = read.isComplete;
  listing.hasForeignNames = read.hasForeignNames;
  return listing;
}

const ListedName* FolderListings::find(const std::string& folder, std::u16string_view upper,
                                       std::u16string_view name) {
  const ListedNames& names = *current(folder).names;
  const auto first = std::lower_bound(
      names.begin(), names.end(), upper,
      [](const ListedName& listed, std::u16string_view wanted) { return listed.upper < wanted; });
  if (first == names.end() || first->upper != upper) return nullptr;
  if (!first->hasTwin) return &*first;
  const std::string written = utf8(name);
  auto exact = first;
  while (exact != names.end() && exact->upper == upper && exact->name != written) ++exact;
  return exact != names.end() && exact->upper == upper ? &*exact : &*first;
}

std::shared_ptr<const ListedNames> FolderListings::all(const std::string& folder) {
  return current(folder).names;
}

bool FolderListings::isSurelyMissing(const std::string& folder, std::u16string_view name) const {
  const Listing* listing = known(folder);
  if (listing == nullptr || !listing->readable) return false;
  return !listing->hasForeignNames ||
         std::all_of(name.begin(), name.end(), [](char16_t unit) { return unit < 0x80; });
}

}  // namespace zelvreg::machine
