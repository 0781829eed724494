#include "runtime/Directory.h"

#include <windows.h>

#include <algorithm>

#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr DWORD passedOver =
    FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

}  // namespace

std::string Dir(const std::string& pattern, Shares shares) {
  if (!mayBeOpened(pattern, shares)) {
    return {};
  }
  WIN32_FIND_DATAW entry{};
  HANDLE search = FindFirstFileW(Wide(pattern).get(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    return {};
  }
  std::string name;
  do {
    if ((entry.dwFileAttributes & passedOver) == 0) {
      name = utf8(untilNul(static_cast<LPCWSTR>(entry.cFileName)));
    }
  } while (name.empty() && FindNextFileW(search, &entry) != FALSE);
  FindClose(search);
  return name;
}

bool makeFolder(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(Wide(path).get());
  if (attributes != INVALID_FILE_ATTRIBUTES) {
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  }
  // Above the first folder there is only the drive.
  const std::string above = path.substr(0, std::min(path.rfind('\\'), path.size()));
  const bool hasAbove = above.ends_with(':') || (above != path && makeFolder(above));
  return hasAbove && CreateDirectoryW(Wide(path).get(), nullptr) != FALSE;
}

}  // namespace zelvreg
