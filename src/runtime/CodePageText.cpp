#include "runtime/CodePageText.h"

#include "text/Wide.h"

namespace zelvreg {

std::string textOfCodePage(std::string_view bytes, UINT codePage) {
  // The calls take no empty text.
  if (bytes.empty()) {
    return {};
  }
  const auto size = static_cast<int>(bytes.size());
  // No byte gives more than one unit.
  std::u16string wide(bytes.size(), u'\0');
  const int length = MultiByteToWideChar(codePage, 0, bytes.data(), size, roomIn(wide), size);
  wide.resize(static_cast<std::size_t>(length));
  return utf8(wide);
}

std::string codePageBytes(std::string_view text, UINT codePage) {
  if (text.empty()) {
    return {};
  }
  const std::u16string wide = utf16(text);
  const auto length = static_cast<int>(wide.size());
  const auto convert = [&](char* bytes, int size) {
    return static_cast<std::size_t>(
        WideCharToMultiByte(codePage, 0, wideText(wide), length, bytes, size, nullptr, nullptr));
  };
  std::string bytes(convert(nullptr, 0), '\0');
  convert(bytes.data(), static_cast<int>(bytes.size()));
  return bytes;
}

// A character that only looks alike is read back as another, and so is the sign for a missing one.
std::optional<std::string> exactCodePageBytes(std::string_view text, UINT codePage) {
  std::string bytes = codePageBytes(text, codePage);
  return textOfCodePage(bytes, codePage) == text ? std::optional(std::move(bytes)) : std::nullopt;
}

}  // namespace zelvreg
