#include <windows.h>

#include <array>

#include "runtime/WindowsFolder.h"

namespace zelvreg {

std::string windowsFolder() {
  std::array<char, MAX_PATH> path{};
  // Not GetWindowsDirectory, which on a terminal server may give a folder that is the user's own.
  const UINT length = GetSystemWindowsDirectoryA(path.data(), static_cast<UINT>(path.size()));
  return {path.data(), length < path.size() ? length : 0};
}

}  // namespace zelvreg
