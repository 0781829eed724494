#include "runtime/Directory.h"

#include <windows.h>

namespace zelvreg {
namespace {

constexpr DWORD passedOver =
    FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

}  // namespace

std::string Dir(const std::string& pattern) {
  WIN32_FIND_DATAA entry{};
  HANDLE search = FindFirstFileA(pattern.c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    return {};
  }
  std::string name;
  do {
    if ((entry.dwFileAttributes & passedOver) == 0) {
      name = static_cast<const char*>(entry.cFileName);
    }
  } while (name.empty() && FindNextFileA(search, &entry) != FALSE);
  FindClose(search);
  return name;
}

}  // namespace zelvreg
