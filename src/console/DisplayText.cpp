#include "console/DisplayText.h"

#include <algorithm>
#include <array>


namespace zelvreg::console {
namespace {

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

constexpr char32_t noCharacter = 0xFFFFFFFF;

struct Character {
  char32_t code = noCharacter;  // for a byte that begins no character
  std::size_t size = 1;
};

// Of a text that is not empty. A longer form than a character needs is none.
Character firstCharacter(std::string_view text) {
  struct Form {
    unsigned char mask;
    unsigned char lead;
    char32_t smallest;
  };
  constexpr std::array<Form, 4> forms{
      {{0x80, 0x00, 0}, {0xE0, 0xC0, 0x80}, {0xF0, 0xE0, 0x800}, {0xF8, 0xF0, 0x10000}}};
  const auto first = static_cast<unsigned char>(text.front());
  for (std::size_t size = 1; size <= forms.size() && size <= text.size(); ++size) {
    const Form& form = forms[size - 1];
    const std::string_view rest = text.substr(1, size - 1);
    if ((first & form.mask) != form.lead || !std::ranges::all_of(rest, isContinuation)) {
      continue;
    }
    char32_t code = first & static_cast<unsigned char>(~form.mask);
    for (const char byte : rest) {
      code = code << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    return code >= form.smallest ? Character{code, size} : Character{};
  }
  return {};
}

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

std::string registryText(std::string_view text) { return std::string(text); }

std::size_t displayWidth(std::string_view text) {
  return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, isContinuation));
}

std::string printable(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const Character next = firstCharacter(text);
    if (next.code == noCharacter) {
      result += '?';
    } else if (steersDisplay(next.code)) {
      result += ' ';
    } else {
      result += text.substr(0, next.size);
    }
    text.remove_prefix(next.size);
  }
  return result;
}

}  // namespace zelvreg::console
