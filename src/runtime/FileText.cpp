#include "runtime/FileText.h"

#include <windows.h>

#include <array>

namespace zelvreg {

std::optional<std::string> readFileText(const std::string& path) {
  HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return std::nullopt;
  }
  std::string text;
  std::array<char, 65536> block{};
  DWORD count = 0;
  BOOL isRead = ReadFile(file, block.data(), static_cast<DWORD>(block.size()), &count, nullptr);
  while (isRead != FALSE && count > 0) {
    text.append(block.data(), count);
    isRead = ReadFile(file, block.data(), static_cast<DWORD>(block.size()), &count, nullptr);
  }
  CloseHandle(file);
  return isRead != FALSE ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace zelvreg
