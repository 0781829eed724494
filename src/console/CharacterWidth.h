// How many columns of a terminal a character takes.
#ifndef ZELVREG_CONSOLE_CHARACTER_WIDTH_H
#define ZELVREG_CONSOLE_CHARACTER_WIDTH_H

#include <cstddef>

namespace zelvreg::console {

// 2 columns for the wide characters of East Asia, none for marks that combine with the character
// before them, 1 for all others. The same on every system, whatever its C library knows.
std::size_t characterWidth(char32_t character);

}  // namespace zelvreg::console

#endif
