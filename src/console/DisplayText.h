// Text of the computer on a terminal.
#ifndef ZELVREG_CONSOLE_DISPLAY_TEXT_H
#define ZELVREG_CONSOLE_DISPLAY_TEXT_H

#include <string>
#include <string_view>

namespace zelvreg::console {

// The number of columns that a UTF-8 text takes on a terminal.
std::size_t displayWidth(std::string_view text);

// A UTF-8 text that is safe to print in one line. Spaces replace control characters of both sets,
// characters that change the direction of writing, and line ends. "?" replaces each byte that is no
// UTF-8, and each unpaired surrogate.
std::string printable(std::string_view text);

}  // namespace zelvreg::console

#endif
