#include "unicode/ReadingOrder.h"

#include <algorithm>
#include <array>

namespace zelvreg {
namespace {

// Of UTF-16, Hebrew to the last Arabic block, and the forms of presentation of both.
struct Range {
  char16_t first;
  char16_t last;
};

constexpr std::array fromRight{Range{0x0590, 0x08FF}, Range{0xFB1D, 0xFDFF}, Range{0xFE70, 0xFEFC}};

// The older pair of marks, which every version of the system knows.
constexpr std::string_view leftToRight = "\xE2\x80\xAA";
constexpr std::string_view endOfOrder = "\xE2\x80\xAC";

}  // namespace

bool readsFromRight(std::u16string_view text) {
  return std::ranges::any_of(text, [](char16_t unit) {
    return std::ranges::any_of(fromRight, [unit](const Range& range) {
      return unit >= range.first && unit <= range.last;
    });
  });
}

std::string keptLeftToRight(std::string_view text) {
  return text.find('\\') == std::string_view::npos
             ? std::string(text)
             : std::string(leftToRight) + std::string(text) + std::string(endOfOrder);
}

}  // namespace zelvreg
