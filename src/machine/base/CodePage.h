// A Windows code page: narrow text to UTF-16 and back.
#ifndef ZELVREG_MACHINE_BASE_CODE_PAGE_H
#define ZELVREG_MACHINE_BASE_CODE_PAGE_H

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::machine {

class CodePage {
 public:
  // One- and two-byte Windows code pages (874, 932, 936, 949, 950, 1250 to 1258) and UTF-8
  // (65001). Throws MachineError for any other number.
  explicit CodePage(unsigned number);

  [[nodiscard]] unsigned number() const { return pageNumber; }

  // A byte without a meaning becomes the control character of its number; in UTF-8, where halves of
  // characters have none, the replacement character.
  [[nodiscard]] std::u16string decode(std::string_view text) const;
  // A character that the code page does not have becomes "?", half of one in UTF-8 the replacement
  // character.
  [[nodiscard]] std::string encode(std::u16string_view text) const;

 private:
  unsigned pageNumber;
  std::array<bool, 256> isLeadByte{};
  std::vector<char16_t> unicodeOf;     // by byte, or by lead byte * 256 + trail byte
  std::vector<std::uint16_t> bytesOf;  // by UTF-16 unit; 0 for one that is not in the page
};

// The page of this number, made once and kept; throws MachineError as the constructor does.
const CodePage& sharedCodePage(unsigned number);

}  // namespace zelvreg::machine

#endif
