#include "console/DisplayText.h"

#include <windows.h>

#include <algorithm>
#include <vector>

#include "languages/Charset.h"

namespace zelvreg::console {
namespace {

std::string utf8Text(std::string_view text, UINT codePage) {
  if (text.empty()) {
    return {};
  }
  const int length = static_cast<int>(text.size());
  std::vector<WCHAR> wide(text.size());
  const int wideLength = MultiByteToWideChar(codePage, 0, text.data(), length, wide.data(), length);
  // Three bytes hold any unit of UTF-16.
  std::string utf8(static_cast<std::size_t>(wideLength) * 3, '\0');
  const int size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), wideLength, utf8.data(),
                                       static_cast<int>(utf8.size()), nullptr, nullptr);
  utf8.resize(static_cast<std::size_t>(size));
  return utf8;
}

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

}  // namespace

std::string registryText(std::string_view text) { return utf8Text(text, CP_ACP); }

std::string captionText(std::string_view text, int charset) {
  return utf8Text(text, codePageOfCharset(charset));
}

std::size_t displayWidth(std::string_view text) {
  return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, isContinuation));
}

std::string printable(std::string_view text) {
  std::string result(text);
  std::ranges::replace_if(
      result, [](unsigned char byte) { return byte < 0x20 || byte == 0x7F; }, ' ');
  return result;
}

}  // namespace zelvreg::console
