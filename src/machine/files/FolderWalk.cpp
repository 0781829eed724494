#include "machine/files/FolderWalk.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <optional>

#include "machine/base/CaseFold.h"
#include "machine/base/HostName.h"
#include "machine/files/DiskAttributes.h"
#include "machine/files/ReparseData.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

constexpr int mostLinks = 40;

std::string targetOf(const std::string& link) {
  std::array<char, PATH_MAX> target{};
  const ssize_t size = readlink(link.c_str(), target.data(), target.size());
  return {target.data(), size < 0 ? 0 : static_cast<std::size_t>(size)};
}

// Drivers of NTFS show as such links what only Windows can read: files that the system has
// compressed, those of a cloud, and the like.
bool isOpaque(std::string_view target) {
  return target.empty() || target.starts_with("unsupported reparse ");
}

}  // namespace

FolderWalk::FolderWalk(FolderListings& folderListings, WalkRoot walkRoot,
                       std::u16string_view pathNames)
    : listings(folderListings), drive(walkRoot.drive), root(walkRoot.folder), path(pathNames) {
  begin();
}

void FolderWalk::begin() {
  names = path;
  upper = upperCase(path);
  at = 0;
  file = root;
  ownLeft = std::u16string::npos;
  isFolder = true;
  links = 0;
}

LONG FolderWalk::go(LONG outside) { return goOn(outside, nullptr); }

LONG FolderWalk::go(LONG outside, KnownFolders& known) {
  const KnownFolders::Start start = known.above(upper);
  if (start.folder != nullptr) {
    const std::uint64_t before = listings.timesRead();
    at = start.length;
    file.reserve(start.folder->size() + path.size() - at);
    file = *start.folder;
    const LONG answer = goOn(outside, nullptr);
    // If nothing had to be read anew, the folder is still the one that the whole way leads to.
    if (listings.timesRead() == before) return answer;
    begin();
  }
  return goOn(outside, &known);
}

LONG FolderWalk::goOn(LONG outside, KnownFolders* known) {
  while (!isAtEnd()) {
    const Step step = takeStep();
    if (step.name == u"..") {
      if (!goUp()) return outside;
      continue;
    }
    const ListedName* name = listings.find(file, step.upper, step.name);
    if (name == nullptr) return missing(step);
    // Other spellings of the way lead elsewhere.
    if (name->hasTwin) known = nullptr;
    if (name->kind == NameKind::Link) {
      const std::string link = file + "/" + name->name;
      const std::string target = targetOf(link);
      if (isOpaque(target)) return stopAt(link, outside);
      if (++links > mostLinks) return ERROR_CANT_RESOLVE_FILENAME;
      ownLeft = std::min(ownLeft, names.size() - at);
      // What lies behind a link has another path.
      known = nullptr;
      if (leadsElsewhere(link, drive) || !follow(target)) return outside;
      continue;
    }
    // A device or a pipe, or what cannot be looked at.
    if (name->kind == NameKind::Other) return ERROR_ACCESS_DENIED;
    (file += '/') += name->name;
    isFolder = name->kind == NameKind::Folder;
    if (!isFolder && !isAtEnd()) return ERROR_PATH_NOT_FOUND;
    if (isFolder && known != nullptr) known->keep(std::u16string_view(upper).substr(0, at), file);
  }
  return ERROR_SUCCESS;
}

FolderWalk::Step FolderWalk::takeStep() {
  const std::size_t start = at + 1;
  at = findUnit(names, u'\\', start);
  const auto part = [&](std::u16string_view text) { return text.substr(start, at - start); };
  return {part(names), part(upper)};
}

bool FolderWalk::goUp() {
  if (file.size() == root.size()) return false;
  file.resize(file.find_last_of('/'));
  isFolder = true;
  return true;
}

LONG FolderWalk::missing(const Step& step) {
  if (!listings.isSurelyMissing(file, step.name)) return ERROR_ACCESS_DENIED;
  if (names.size() - at >= ownLeft) return ERROR_CANT_RESOLVE_FILENAME;
  (file += '/') += utf8(step.name);
  return isAtEnd() ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
}

// At what is there, whatever it is: what lies below it is not to be seen from here.
LONG FolderWalk::stopAt(const std::string& link, LONG outside) {
  file = link;
  isFolder = (ntfsAttributesOf(link) & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return isAtEnd() ? ERROR_SUCCESS : isFolder ? outside : ERROR_PATH_NOT_FOUND;
}

// Puts the names of a link's target in front of those that are left. False if it begins outside
// or cannot be told.
bool FolderWalk::follow(std::string_view target) {
  if (target.starts_with('/')) {
    const bool inside = target == root || target.starts_with(root + "/");
    if (!inside) return false;
    target.remove_prefix(root.size());
    file = root;
  }
  std::u16string next;
  while (!target.empty()) {
    const std::string_view name = target.substr(0, target.find('/'));
    target.remove_prefix(std::min(target.size(), name.size() + 1));
    if (name.empty() || name == ".") continue;
    const std::optional<std::u16string> wide = windowsName(name);
    if (!wide) return false;
    (next += u'\\') += *wide;
  }
  isFolder = true;
  next.append(names.substr(at));
  followed = std::move(next);
  names = followed;
  upper = upperCase(names);
  at = 0;
  return true;
}

}  // namespace zelvreg::machine
