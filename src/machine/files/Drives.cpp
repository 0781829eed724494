#include "machine/files/Drives.h"

#include <algorithm>
#include <utility>

#include "machine/base/CaseFold.h"
#include "machine/files/FolderWalk.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {

Drives::Drives(DriveSettings driveSettings)
    : settings(std::move(driveSettings)),
      current(parseFullPath(settings.programFolder)),
      windows(parseFullPath(settings.windowsFolder)) {
  for (const auto& [letter, folder] : settings.folders) {
    std::string root = std::filesystem::canonical(folder).string();
    if (root == "/") root.clear();
    drives.emplace(letter, Drive{std::move(root), {}});
  }
}

LONG Drives::missingDriveError() const {
  return settings.missingDrivesAreUnknown ? ERROR_NOT_READY : ERROR_PATH_NOT_FOUND;
}

void Drives::redirect(PathName& path) const {
  if (!settings.is64Bit) return;
  const auto below = namesBelow(windows, path);
  if (!below || below->empty()) return;
  const std::u16string_view name = below->substr(0, below->find(u'\\', 1));
  const char16_t* other = isSameName(name, u"\\System32")    ? u"\\SysWOW64"
                          : isSameName(name, u"\\Sysnative") ? u"\\System32"
                                                             : nullptr;
  if (other != nullptr) path.names.replace(windows.names.size(), name.size(), other);
}

Place Drives::find(std::u16string_view text) {
  if (onFind) onFind(text);
  PathName path = parsePath(text, current);
  redirect(path);
  Place place = walk(path);
  if (!place.exists() && !lent.empty()) {
    if (Place other = findLent(path); other.exists()) return other;
  }
  return place;
}

void Drives::lend(std::u16string_view path, const std::filesystem::path& folder) {
  std::error_code error;
  const std::filesystem::path real = std::filesystem::canonical(folder, error);
  if (!error) lent.push_back({parseFullPath(path), real.string()});
}

Place Drives::findLent(const PathName& path) {
  Place place;
  place.error = ERROR_PATH_NOT_FOUND;
  for (const Lent& loan : lent) {
    const auto below = namesBelow(loan.path, path);
    if (!below) continue;
    FolderWalk way(listings, {'\0', loan.folder}, *below);
    place.error = way.go(ERROR_PATH_NOT_FOUND);
    place.isFolder = place.exists() && way.leadsToFolder();
    place.isLent = true;
    place.file = way.takeWhere();
  }
  return place;
}

bool Drives::hasDrive(char16_t letter) const {
  return letter < 0x80 && drives.contains(static_cast<char>(letter & ~0x20));
}

Place Drives::findTrue(std::u16string_view path) { return walk(parseFullPath(path)); }

Place Drives::walk(const PathName& path) {
  Place place;
  place.error = path.error;
  if (!place.exists()) return place;
  const auto found = drives.find(path.drive);
  if (found == drives.end()) {
    place.error = missingDriveError();
    return place;
  }
  Drive& drive = found->second;
  FolderWalk way(listings, {path.drive, drive.root}, path.names);
  place.error =
      way.go(settings.missingDrivesAreUnknown ? ERROR_NOT_READY : ERROR_CANT_RESOLVE_FILENAME,
             drive.knownFolders);
  place.isFolder = place.exists() && way.leadsToFolder();
  // A separator after a name says that it is a folder's.
  if (path.endsInSeparator && place.exists() && !place.isFolder) place.error = ERROR_INVALID_NAME;
  place.drive = path.drive;
  place.file = way.takeWhere();
  place.rootSize = drive.root.size();
  return place;
}

std::string Place::path() const {
  if (drive == '\0') return {};
  std::string result{drive, ':'};
  result.append(file, rootSize);
  std::replace(result.begin(), result.end(), '/', '\\');
  return file.size() == rootSize ? result + '\\' : result;
}

std::string Place::folder() const {
  return file.size() == rootSize ? file : file.substr(0, file.find_last_of('/'));
}

DWORD Drives::attributes(const Place& place) const {
  // Most computers say nothing of any file, and then the path need not be known.
  const std::string path = fileRecords.hasAnyAttributes() ? place.path() : std::string();
  return fileRecords.attributes(path, place.isFolder);
}

std::string Drives::truePath(std::u16string_view text) const {
  const PathName path = parseFullPath(text);
  if (path.error != ERROR_SUCCESS || path.drive == '\0') return {};
  const std::string result = std::string{path.drive, ':'} + utf8(path.names);
  return path.names.empty() ? result + "\\" : result;
}

bool Drives::isUnknown(std::u16string_view path) {
  if (!settings.missingDrivesAreUnknown) return false;
  const LONG error = find(path).error;
  return error == ERROR_NOT_READY || error == ERROR_ACCESS_DENIED ||
         (error == ERROR_INVALID_NAME && isStreamOfFile(path));
}

bool Drives::isStreamOfFile(std::u16string_view path) {
  const std::size_t separator = path.find_last_of(u"\\/");
  constexpr std::size_t behindDrive = 2;
  const std::size_t colon =
      path.find(u':', separator == std::u16string_view::npos ? behindDrive : separator);
  return colon != std::u16string_view::npos && find(path.substr(0, colon)).exists();
}

}  // namespace zelvreg::machine
