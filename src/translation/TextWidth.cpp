#include "translation/TextWidth.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include "text/Characters.h"

namespace zelvreg {
namespace {

// In thousandths of the font's height, from the blank to "~".
constexpr std::array ascii{
    260, 267, 401, 646, 572, 823, 730, 221, 296, 296, 552, 572, 245, 322, 266, 367, 572, 572, 572,
    572, 572, 572, 572, 572, 572, 572, 266, 266, 572, 572, 572, 429, 899, 633, 648, 631, 729, 556,
    516, 728, 738, 279, 267, 614, 519, 903, 754, 779, 602, 779, 618, 549, 553, 728, 595, 926, 577,
    560, 571, 329, 367, 329, 542, 448, 577, 556, 613, 476, 613, 561, 339, 548, 614, 253, 253, 525,
    253, 930, 614, 604, 613, 613, 408, 477, 353, 614, 501, 778, 524, 504, 468, 379, 551, 379, 572};

struct Range {
  char32_t first;
  char32_t last;
  int width;
};

// The mean of each. The first that has the character counts.
constexpr std::array ranges{
    Range{0x00C0, 0x00CB, 654},  // Latin capitals with accents
    Range{0x00CC, 0x00CF, 279},  Range{0x00D0, 0x00DE, 700},  Range{0x00DF, 0x00EB, 570},
    Range{0x00EC, 0x00EF, 253},  Range{0x00F0, 0x024F, 560},  Range{0x0300, 0x036F, 0},
    Range{0x0370, 0x03AB, 644},  Range{0x03AC, 0x03FF, 578},  Range{0x0400, 0x042F, 709},
    Range{0x0430, 0x052F, 614},  Range{0x0591, 0x05C7, 0},    Range{0x05D0, 0x05FF, 554},
    Range{0x064B, 0x065F, 0},    Range{0x0600, 0x06FF, 500},  // Arabic letters are joined
    Range{0x0E31, 0x0E31, 0},    Range{0x0E34, 0x0E3A, 0},    Range{0x0E47, 0x0E4E, 0},
    Range{0x0E00, 0x0E7F, 560},  Range{0x2013, 0x2013, 500},  Range{0x2018, 0x2019, 170},
    Range{0x200B, 0x200F, 0},    Range{0x201C, 0x201E, 350},  Range{0x2026, 0x2026, 784},
    Range{0x202A, 0x202E, 0},    Range{0x2E80, 0xD7FF, 1000},  // scripts as wide as high
    Range{0xF900, 0xFAFF, 1000}, Range{0xFF00, 0xFF60, 1000},
};
constexpr int usual = 572;
constexpr char32_t firstSquare = 0x2E80;

// Of all small letters, weighed alike.
constexpr double boldShare = 1.085;

int thousandthsOf(char32_t character) {
  if (character >= U' ' && character <= U'~') {
    return ascii.at(character - U' ');
  }
  const auto* found = std::ranges::find_if(ranges, [character](const Range& range) {
    return character >= range.first && character <= range.last;
  });
  return found == ranges.end() ? usual : found->width;
}

double pixelsPerThousandth(const TextSize& size) {
  return size.points * 96 / 72 / 1000 * (size.isBold ? boldShare : 1);
}

bool isMark(std::u32string_view text, std::size_t at) {
  return text[at] == U'&' && at + 1 < text.size() && text[at + 1] != U' ';
}

}  // namespace

double textWidth(std::string_view text, const TextSize& size) {
  const std::u32string all = charactersOf(text);
  int sum = 0;
  for (std::size_t at = 0; at < all.size(); ++at) {
    sum += isMark(all, at) ? 0 : thousandthsOf(all[at]);
  }
  return sum * pixelsPerThousandth(size);
}

int linesOf(std::string_view text, const TextSize& size, double width) {
  const double scale = pixelsPerThousandth(size);
  int lines = 1;
  double used = 0;
  double word = 0;
  for (const char32_t character : charactersOf(text)) {
    const double own = thousandthsOf(character) * scale;
    const bool breaksAfter = character == U' ' || character >= firstSquare;
    word += own;
    // A blank at the end of a line takes no room.
    const double needed = character == U' ' ? word - own : word;
    if (needed > width) {
      return std::numeric_limits<int>::max();
    }
    if (used + needed > width && used > 0) {
      ++lines;
      used = 0;
    }
    if (breaksAfter) {
      used += word;
      word = 0;
    }
  }
  return lines;
}

}  // namespace zelvreg
