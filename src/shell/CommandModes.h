// The modes of the program's command line.
#ifndef ZELVREG_SHELL_COMMAND_MODES_H
#define ZELVREG_SHELL_COMMAND_MODES_H

#include <string_view>

namespace zelvreg {

struct Form42;

// Before the load of the form: "w4" lists and ends, "w4-c4" lists, fixes and ends, "r" rechecks the
// rows that were ticked and ends, "r-c" also fixes them, "d" starts without the Start button.
// Any other text is kept and has no effect.
void readCommandLine(Form42& form, std::string_view commandLine);

// The last step of the load: ticks all rows in the suite's modes and runs the scan of the mode.
// Does not return in an automatic mode whose scan has a row to test.
void runCommandMode(Form42& form);

}  // namespace zelvreg

#endif
