// What the program was called with.
#ifndef ZELVREG_CONSOLE_ARGUMENTS_H
#define ZELVREG_CONSOLE_ARGUMENTS_H

#include <string>
#include <vector>

namespace zelvreg::console {

// The arguments of main as UTF-8, the program's own name first. On Windows, where main gets them in
// a code page, they come from the wide command line.
std::vector<std::string> typedArguments(int count, const char* const* arguments);

}  // namespace zelvreg::console

#endif
