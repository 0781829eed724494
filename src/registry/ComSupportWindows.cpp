#include "registry/ComSupport.h"

namespace zelvreg {

std::wstring wideText(std::string_view text) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  wide.resize(static_cast<std::size_t>(
      length == 0 ? 0 : MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), length)));
  return wide;
}

std::string narrowText(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  // No code page of the system needs more than four bytes for a unit.
  std::string narrow(text.size() * 4, '\0');
  narrow.resize(static_cast<std::size_t>(
      length == 0 ? 0
                  : WideCharToMultiByte(CP_ACP, 0, text.data(), length, narrow.data(),
                                        static_cast<int>(narrow.size()), nullptr, nullptr)));
  return narrow;
}

}  // namespace zelvreg
