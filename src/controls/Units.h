// Text for fields of a fixed size.
#ifndef ZELVREG_CONTROLS_UNITS_H
#define ZELVREG_CONTROLS_UNITS_H

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "unicode/Unicode.h"

namespace zelvreg::controls {

// The start of the text, up to this many units of UTF-16, without cutting a surrogate pair in half.
constexpr std::u16string_view firstUnits(std::u16string_view text, std::size_t units) {
  if (text.size() <= units) {
    return text;
  }
  const bool splitsPair = units > 0 && isPairAt(text, units - 1);
  return text.substr(0, splitsPair ? units - 1 : units);
}

// As much of the text as the field has room for, with a NUL behind it. The field must be zeroed.
template <class Unit, std::size_t room>
void copyUnits(std::u16string_view text, Unit (&field)[room]) {
  const std::u16string_view units = firstUnits(text, room - 1);
  std::copy(units.begin(), units.end(), field);
}

}  // namespace zelvreg::controls

#endif
