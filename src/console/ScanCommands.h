// Scanning from the command line.
#ifndef ZELVREG_CONSOLE_SCAN_COMMANDS_H
#define ZELVREG_CONSOLE_SCAN_COMMANDS_H

#include "console/Commands.h"

namespace zelvreg::console {

// Each gives the exit status, and throws std::runtime_error with one line on failure.
int scan(const Options& options, Computer& computer, const Streams& streams);
// The automatic modes, with their result files.
int runAutomatically(const Options& options, Computer& computer, const Streams& streams);

}  // namespace zelvreg::console

#endif
