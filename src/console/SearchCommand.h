// The registry search.
#ifndef ZELVREG_CONSOLE_SEARCH_COMMAND_H
#define ZELVREG_CONSOLE_SEARCH_COMMAND_H

#include "console/Commands.h"

namespace zelvreg::console {

// Throws std::runtime_error if the root has no keys. After an interruption, prints what was found
// so far and then throws it too.
int search(const Options& options, const Computer& computer, const Streams& streams);

}  // namespace zelvreg::console

#endif
