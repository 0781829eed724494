// The types of values whose data we look into, as the numbers that the system gives them.
#ifndef ZELVREG_ROOTS_VALUE_TYPES_H
#define ZELVREG_ROOTS_VALUE_TYPES_H

#include <cstdint>

namespace zelvreg::valueTypes {

inline constexpr std::uint32_t text = 1;            // REG_SZ
inline constexpr std::uint32_t expandableText = 2;  // REG_EXPAND_SZ
inline constexpr std::uint32_t binary = 3;          // REG_BINARY
inline constexpr std::uint32_t number = 4;          // REG_DWORD
inline constexpr std::uint32_t texts = 7;           // REG_MULTI_SZ

}  // namespace zelvreg::valueTypes

namespace zelvreg {

// Whether data of this type are one text, in UTF-16.
constexpr bool isSingleText(std::uint32_t type) {
  return type == valueTypes::text || type == valueTypes::expandableText;
}

// The same, or several texts.
constexpr bool isText(std::uint32_t type) {
  return isSingleText(type) || type == valueTypes::texts;
}

}  // namespace zelvreg

#endif
