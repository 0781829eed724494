// How long names in the registry may be, and how deep its keys may lie.
#ifndef ZELVREG_ROOTS_NAME_LIMITS_H
#define ZELVREG_ROOTS_NAME_LIMITS_H

#include <cstddef>

namespace zelvreg {

// In UTF-16 units, without a terminator.
inline constexpr std::size_t longestKeyName = 255;
inline constexpr std::size_t longestValueName = 16383;

// In names below a root.
inline constexpr std::size_t deepestKey = 512;

}  // namespace zelvreg

#endif
