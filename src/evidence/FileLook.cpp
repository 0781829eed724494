#include "evidence/FileLook.h"

#include <windows.h>

#include "evidence/CommandText.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr std::size_t driveRootLength = 3;  // "C:\"

FileIs fromError(LONG error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    // No file can have such a name.
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
      return FileIs::Missing;
    case ERROR_PATH_NOT_FOUND:
      return FileIs::InMissingFolder;
    case ERROR_NOT_READY:  // of the volume that a link leads to
    case ERROR_CANT_ACCESS_FILE:
    case ERROR_CANT_RESOLVE_FILENAME:
      return FileIs::BehindBrokenLink;
    default:
      return error >= ERROR_NOT_A_REPARSE_POINT && error <= ERROR_REPARSE_TAG_MISMATCH
                 ? FileIs::BehindBrokenLink
                 : FileIs::Denied;
  }
}

// The system takes a longer path only in this form, and then exactly as it is written.
std::string callPath(const std::string& path) {
  constexpr std::size_t longestFolder = 247;
  const bool isLong = path.size() > longestFolder && utf16(path).size() > longestFolder;
  return isLong ? "\\\\?\\" + replaceAll(path, "/", "\\") : path;
}

bool isLink(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(Wide(callPath(path)).get());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

DriveIs askDrive(char letter) {
  switch (GetDriveTypeW(Wide(std::string{letter, ':', '\\'}).get())) {
    case DRIVE_FIXED:
      return DriveIs::Fixed;
    case DRIVE_REMOTE:
      return DriveIs::Remote;
    case DRIVE_UNKNOWN:
    case DRIVE_NO_ROOT_DIR:
      return DriveIs::Absent;
    default:
      return DriveIs::Removable;
  }
}

}  // namespace

DriveIs FileLook::drive(char letter) {
  auto& answer = drives[static_cast<std::size_t>((letter | 0x20) - 'a')];
  if (!answer) {
    answer = askDrive(letter);
  }
  return *answer;
}

FileIs FileLook::at(const std::string& path) {
  const auto found = known.find(path);
  if (found != known.end()) {
    return found->second;
  }
  FileIs answer = ask(path);
  known.emplace(path, answer);
  if (answer == FileIs::InMissingFolder && isDrivePath(path)) {
    answer = whyMissing(path);
    known.insert_or_assign(path, answer);
  }
  return answer;
}

FileIs FileLook::ask(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(Wide(callPath(path)).get());
  if (attributes != INVALID_FILE_ATTRIBUTES) {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileIs::Folder : FileIs::File;
  }
  return fromError(static_cast<LONG>(GetLastError()));
}

// From the drive down, to the first folder that is missing or is a link whose target is. So a path
// of very many folders costs no more than what of it is there.
FileIs FileLook::whyMissing(const std::string& path) {
  const auto parent = known.find(path.substr(0, path.find_last_of("\\/")));
  if (parent != known.end() &&
      (parent->second == FileIs::Missing || parent->second == FileIs::InMissingFolder)) {
    return FileIs::InMissingFolder;
  }
  std::string above = path.substr(0, driveRootLength);
  for (auto end = path.find_first_of("\\/", driveRootLength); end != std::string::npos;
       end = path.find_first_of("\\/", end + 1)) {
    std::string folder = path.substr(0, end);
    const FileIs answer = at(folder);
    if (answer == FileIs::Missing || answer == FileIs::InMissingFolder) {
      return isLink(above) ? FileIs::BehindBrokenLink : FileIs::InMissingFolder;
    }
    if (answer != FileIs::Folder) {
      return answer == FileIs::File ? FileIs::InMissingFolder : answer;
    }
    above = std::move(folder);
  }
  return isLink(above) ? FileIs::BehindBrokenLink : FileIs::Missing;
}

}  // namespace zelvreg
