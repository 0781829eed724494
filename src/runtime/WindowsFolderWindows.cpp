#include <windows.h>

#include <array>

#include "runtime/WindowsFolder.h"

namespace zelvreg {

std::string windowsFolder() {
  std::array<char, MAX_PATH> path{};
  const UINT length = GetWindowsDirectoryA(path.data(), static_cast<UINT>(path.size()));
  return {path.data(), length};
}

}  // namespace zelvreg
