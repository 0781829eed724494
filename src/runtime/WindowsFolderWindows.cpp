#include <windows.h>

#include <array>

#include "runtime/WindowsFolder.h"
#include "text/Wide.h"

namespace zelvreg {

std::string windowsFolder() {
  std::array<char16_t, MAX_PATH> path{};
  // Not GetWindowsDirectory, which on a terminal server may give a folder that is the user's own.
  const UINT length = GetSystemWindowsDirectoryW(roomIn(path), static_cast<UINT>(path.size()));
  return utf8({path.data(), length < path.size() ? length : 0});
}

}  // namespace zelvreg
