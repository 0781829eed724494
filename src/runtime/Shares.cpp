#include "runtime/Shares.h"

#include <windows.h>

#include <algorithm>
#include <string>

#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

bool isSeparator(char character) { return character == '\\' || character == '/'; }

bool isLetter(char character) {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool beginsWithDrive(std::string_view path) {
  return path.size() >= 2 && isLetter(path[0]) && path[1] == ':';
}

bool isRemoteDrive(char letter) {
  return GetDriveTypeW(Wide(std::string{letter, ':', '\\'}).get()) == DRIVE_REMOTE;
}

// Four characters that the system reads as the root of all devices: "\\?\", "\\.\" and "\??\", the
// first two with either separator.
bool beginsWithDevices(std::string_view path) {
  if (path.size() < 4 || !isSeparator(path[0]) || !isSeparator(path[3])) {
    return false;
  }
  return (isSeparator(path[1]) && (path[2] == '?' || path[2] == '.')) || path.substr(1, 2) == "??";
}

// Only a drive or a volume is known to be of this computer; a step upwards would lead out of it.
bool isLocalDevice(std::string_view device) {
  if (contains(device, "..")) {
    return false;
  }
  return beginsWithDrive(device) ? !isRemoteDrive(device[0])
                                 : lowerCase(device.substr(0, 7)) == "volume{";
}

}  // namespace

bool leadsToShare(std::string_view path) {
  path = untilNul(path);
  path.remove_prefix(std::min(path.find_first_not_of(" \t"), path.size()));
  if (beginsWithDevices(path)) {
    return !isLocalDevice(path.substr(4));
  }
  if (path.size() >= 2 && isSeparator(path[0]) && isSeparator(path[1])) {
    return true;
  }
  return beginsWithDrive(path) && isRemoteDrive(path[0]);
}

bool mayBeOpened(std::string_view path, Shares shares) {
  return shares == Shares::Asked || !leadsToShare(path);
}

}  // namespace zelvreg
