#include "keys/RegistryTextDecoder.h"

#include <algorithm>

namespace zelvreg {
namespace {

constexpr std::string_view utf16Mark = "\xFF\xFE";
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view narrowHeader = "REGEDIT4";
constexpr std::u16string_view wideNarrowHeader = u"REGEDIT4";
constexpr std::u16string_view currentHeader = u"Windows Registry Editor Version 5.00";

void fail(DecodedRegistryText& decoded, std::size_t line, const char* what) {
  decoded.fault = {line, what};
}

void decodeUtf16(DecodedRegistryText& decoded, std::string_view bytes) {
  decoded.text.reserve(bytes.size() / 2);
  for (std::size_t index = 0; index + 1 < bytes.size(); index += 2) {
    const auto low = static_cast<unsigned char>(bytes[index]);
    const auto high = static_cast<unsigned char>(bytes[index + 1]);
    decoded.text += static_cast<char16_t>(low | high << 8);
  }
  if (bytes.size() % 2 != 0) {
    fail(decoded, 1 + static_cast<std::size_t>(std::ranges::count(decoded.text, u'\n')),
         "the file ends in half a character");
  }
}

// Line by line, so that the line of a fault is known.
void decodeLines(DecodedRegistryText& decoded, UINT codePage, std::string_view bytes) {
  for (std::size_t line = 1; !bytes.empty(); ++line) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
    const auto wide = decodeNarrow(codePage, bytes.substr(0, end));
    if (!wide) {
      fail(decoded, line, "a character is not valid in the file's encoding");
      return;
    }
    decoded.text += *wide;
    bytes.remove_prefix(end);
  }
}

void readHeader(DecodedRegistryText& decoded) {
  const std::u16string_view text = decoded.text;
  const std::size_t end = std::min(text.find(u'\n'), text.size());
  std::u16string_view header = text.substr(0, end);
  header = header.substr(0, header.find_last_not_of(u" \t\r") + 1);
  decoded.isNarrow = header == wideNarrowHeader;
  decoded.body = std::min(end + 1, text.size());
  if (!decoded.isNarrow && header != currentHeader) {
    fail(decoded, 1,
         "this is no registry file; it must begin with \"Windows Registry Editor Version 5.00\" or "
         "\"REGEDIT4\"");
  }
}

}  // namespace

std::optional<std::u16string> decodeNarrow(UINT codePage, std::string_view narrow) {
  const auto length = static_cast<int>(narrow.size());
  if (length == 0) {
    return std::u16string();
  }
  std::u16string wide(narrow.size(), u'\0');
  const int size = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, narrow.data(), length,
                                       reinterpret_cast<LPWSTR>(wide.data()), length);
  wide.resize(static_cast<std::size_t>(size));
  return size > 0 ? std::optional(std::move(wide)) : std::nullopt;
}

DecodedRegistryText decodeRegistryText(std::string_view bytes) {
  DecodedRegistryText decoded;
  if (bytes.starts_with(utf16Mark)) {
    decodeUtf16(decoded, bytes.substr(utf16Mark.size()));
  } else if (bytes.starts_with(utf8Mark)) {
    decodeLines(decoded, CP_UTF8, bytes.substr(utf8Mark.size()));
  } else {
    decodeLines(decoded, bytes.starts_with(narrowHeader) ? CP_ACP : CP_UTF8, bytes);
  }
  if (!decoded.fault) {
    readHeader(decoded);
  }
  return decoded;
}

}  // namespace zelvreg
