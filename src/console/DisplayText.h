// Text of the computer on a terminal.
#ifndef ZELVREG_CONSOLE_DISPLAY_TEXT_H
#define ZELVREG_CONSOLE_DISPLAY_TEXT_H

#include <string>
#include <string_view>

namespace zelvreg::console {

// The number of columns that a UTF-8 text takes on a terminal.
std::size_t displayWidth(std::string_view text);

// A UTF-8 text that cannot upset a terminal, a line or the order of its characters: spaces stand
// for control characters of both sets, for those that steer the direction of writing, and for what
// ends a line; "?" stands for each byte that is no UTF-8, and for each half of a surrogate pair.
std::string printable(std::string_view text);

}  // namespace zelvreg::console

#endif
