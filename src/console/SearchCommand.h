// The registry search.
#ifndef ZELVREG_CONSOLE_SEARCH_COMMAND_H
#define ZELVREG_CONSOLE_SEARCH_COMMAND_H

#include "console/Commands.h"

namespace zelvreg::console {

// Throws std::runtime_error when the root has no keys, and after an interruption, behind the output
// of what was found until then.
int search(const Options& options, const Computer& computer, const Streams& streams);

}  // namespace zelvreg::console

#endif
