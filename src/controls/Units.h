// Text in places of a fixed size.
#ifndef ZELVREG_CONTROLS_UNITS_H
#define ZELVREG_CONTROLS_UNITS_H

#include <cstddef>
#include <string_view>

#include "unicode/Unicode.h"

namespace zelvreg::controls {

// As much of the text's head as fits into this many units of UTF-16, no surrogate pair cut in half.
constexpr std::u16string_view firstUnits(std::u16string_view text, std::size_t units) {
  if (text.size() <= units) {
    return text;
  }
  const bool splitsPair = units > 0 && isPairAt(text, units - 1);
  return text.substr(0, splitsPair ? units - 1 : units);
}

}  // namespace zelvreg::controls

#endif
