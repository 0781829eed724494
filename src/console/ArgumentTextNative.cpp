#include <windows.h>

#include "console/ArgumentText.h"

namespace zelvreg::console {

// Here arguments are UTF-8, whatever page the computer that is worked on has.
std::string narrowText(const std::string& argument) {
  const auto size = static_cast<int>(argument.size());
  std::u16string wide(argument.size(), u'\0');
  wide.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_UTF8, 0, argument.data(), size, wide.data(), size)));
  // A character takes at most two bytes in the pages that a computer can have.
  std::string narrow(2 * wide.size(), '\0');
  narrow.resize(static_cast<std::size_t>(
      WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()), narrow.data(),
                          static_cast<int>(narrow.size()), nullptr, nullptr)));
  return narrow;
}

}  // namespace zelvreg::console
