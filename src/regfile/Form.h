// How a file in the registry editor's export format is written.
//
// "REGEDIT4" holds text in a code page, also that of hex(1), hex(2) and hex(7). "Windows Registry
// Editor Version 5.00" holds it in UTF-16 or UTF-8, and hexadecimal data are the bytes as they are.
#ifndef ZELVREG_REGFILE_FORM_H
#define ZELVREG_REGFILE_FORM_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelvreg::regfile {

struct Form {
  enum class Encoding : std::uint8_t { Regedit4, Utf16, Utf8 };
  Encoding encoding = Encoding::Utf16;
  bool hasByteOrderMark = true;    // UTF-8 only; UTF-16 always has one, REGEDIT4 never
  bool hasCarriageReturns = true;  // lines end in CR LF, else in LF

  bool operator==(const Form&) const = default;
};

inline constexpr std::u16string_view regedit4Header = u"REGEDIT4";
inline constexpr std::u16string_view version5Header = u"Windows Registry Editor Version 5.00";

inline constexpr std::string_view utf16Mark = "\xFF\xFE";
inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

// The code page of REGEDIT4, which is the caller's to choose. Both keep NULs. What has no meaning
// in the page gives no text.
using DecodeNarrow = std::optional<std::u16string> (*)(std::string_view narrow);
using EncodeNarrow = std::string (*)(std::u16string_view text);

}  // namespace zelvreg::regfile

#endif
