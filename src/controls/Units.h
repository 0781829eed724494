// Text in places of a fixed size.
#ifndef ZELVREG_CONTROLS_UNITS_H
#define ZELVREG_CONTROLS_UNITS_H

#include <cstddef>
#include <string_view>

namespace zelvreg::controls {

// As much of the text's head as fits into this many units of UTF-16, no surrogate pair cut in half.
constexpr std::u16string_view firstUnits(std::u16string_view text, std::size_t units) {
  const auto isSurrogate = [text](std::size_t index, char16_t kind) {
    return (text[index] & 0xFC00) == kind;
  };
  if (text.size() <= units) {
    return text;
  }
  const bool splitsPair = units > 0 && isSurrogate(units - 1, 0xD800) && isSurrogate(units, 0xDC00);
  return text.substr(0, splitsPair ? units - 1 : units);
}

}  // namespace zelvreg::controls

#endif
