// Arguments of the command line as texts of the computer.
#ifndef ZELVREG_CONSOLE_ARGUMENT_TEXT_H
#define ZELVREG_CONSOLE_ARGUMENT_TEXT_H

#include <string>

namespace zelvreg::console {

// In the code page of the computer; characters that it does not have become "?".
std::string narrowText(const std::string& argument);

}  // namespace zelvreg::console

#endif
