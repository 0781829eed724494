#include "console/DisplayText.h"

#include <algorithm>
#include <array>

#include "console/CharacterWidth.h"
#include "unicode/Unicode.h"

namespace zelvreg::console {
namespace {

struct Range {
  char32_t first;
  char32_t last;
};

// Both sets of control characters, the marks, embeddings, overrides and isolates of the direction
// of writing, and the separators of lines and paragraphs.
constexpr std::array<Range, 7> steering{{{0x00, 0x1F},
                                         {0x7F, 0x9F},
                                         {0x061C, 0x061C},
                                         {0x200E, 0x200F},
                                         {0x2028, 0x202E},
                                         {0x2066, 0x2069},
                                         {0xFEFF, 0xFEFF}}};

bool steersDisplay(char32_t code) {
  return std::ranges::any_of(
      steering, [code](const Range& range) { return code >= range.first && code <= range.last; });
}

}  // namespace

std::size_t displayWidth(std::string_view text) {
  // Each of these takes one column.
  std::size_t width = asciiLength(text);
  text.remove_prefix(width);
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    width += characterWidth(next.code);
    text.remove_prefix(next.size);
  }
  return width;
}

std::string printable(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::string_view next = text.substr(0, firstCharacter(text).size);
    if (!isPlainUtf8(next)) {
      result += '?';
    } else if (steersDisplay(firstCharacter(next).code)) {
      result += ' ';
    } else {
      result += next;
    }
    text.remove_prefix(next.size());
  }
  return result;
}

}  // namespace zelvreg::console
