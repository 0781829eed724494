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
DWORD attributesOf(const std::string& path) {
  constexpr std::size_t longestFolder = 247;
  const bool isLong = path.size() > longestFolder && utf16(path).size() > longestFolder;
  return GetFileAttributesW(isLong ? Wide("\\\\?\\" + replaceAll(path, "/", "\\")).get()
                                   : Wide(path).get());
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

FileIs FileLook::at(const std::string& path) { return look(path).is; }

FileLook::Answer FileLook::look(const std::string& path) {
  const HashedText asked(path);
  if (const Answer* found = known.find(asked)) {
    return *found;
  }
  // It stays where it is while others are added.
  Answer& answer = known.add(asked, {});
  if (isBelowMissing(path)) {
    answer.is = FileIs::InMissingFolder;
    return answer;
  }
  answer = ask(path);
  if (answer.is == FileIs::InMissingFolder && isDrivePath(path)) {
    answer.is = whyMissing(path);
  }
  return answer;
}

FileLook::Answer FileLook::ask(const std::string& path) {
  const DWORD attributes = attributesOf(path);
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    return {fromError(static_cast<LONG>(GetLastError()))};
  }
  return {(attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileIs::Folder : FileIs::File,
          (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0};
}

bool FileLook::isBelowMissing(const std::string& path) const {
  const Answer* folder =
      known.find(HashedText(std::string_view(path).substr(0, lastSeparator(path))));
  return folder != nullptr &&
         (folder->is == FileIs::Missing || folder->is == FileIs::InMissingFolder);
}

// From the drive down, to the first folder that is missing or is a link whose target is. So a path
// of very many folders costs no more than what of it is there.
FileIs FileLook::whyMissing(const std::string& path) {
  Answer above = look(path.substr(0, driveRootLength));
  for (auto end = nextSeparator(path, driveRootLength); end != std::string::npos;
       end = nextSeparator(path, end + 1)) {
    const Answer folder = look(path.substr(0, end));
    if (folder.is == FileIs::Missing || folder.is == FileIs::InMissingFolder) {
      return above.isLink ? FileIs::BehindBrokenLink : FileIs::InMissingFolder;
    }
    if (folder.is != FileIs::Folder) {
      return folder.is == FileIs::File ? FileIs::InMissingFolder : folder.is;
    }
    above = folder;
  }
  return above.isLink ? FileIs::BehindBrokenLink : FileIs::Missing;
}

}  // namespace zelvreg
