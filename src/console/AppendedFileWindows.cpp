#include <windows.h>

#include <stdexcept>

#include "console/AppendedFile.h"
#include "text/Wide.h"

namespace zelvreg::console {

// With this right alone each write goes to the end, wherever that is by then.
AppendedFile::AppendedFile(const std::string& path)
    : handle(reinterpret_cast<std::intptr_t>(
          CreateFileW(Wide(path).get(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                      nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr))) {
  if (reinterpret_cast<HANDLE>(handle) == INVALID_HANDLE_VALUE) {
    throw std::runtime_error(path + " cannot be written; check the folder and the free disk space");
  }
}

AppendedFile::~AppendedFile() { CloseHandle(reinterpret_cast<HANDLE>(handle)); }

bool AppendedFile::append(std::string_view bytes) {
  DWORD written = 0;
  return WriteFile(reinterpret_cast<HANDLE>(handle), bytes.data(), static_cast<DWORD>(bytes.size()),
                   &written, nullptr) != FALSE &&
         written == bytes.size();
}

std::uint32_t processNumber() { return GetCurrentProcessId(); }

}  // namespace zelvreg::console
