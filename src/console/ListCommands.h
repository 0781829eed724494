// The lists that the form keeps: undo journals, exclusions, languages.
#ifndef ZELVREG_CONSOLE_LIST_COMMANDS_H
#define ZELVREG_CONSOLE_LIST_COMMANDS_H

#include "console/Commands.h"

namespace zelvreg::console {

// Each gives the exit status, and throws std::runtime_error with one line on failure.
int workOnUndo(const Options& options, Computer& computer, const Streams& streams);
int workOnExclusions(const Options& options, Computer& computer, const Streams& streams);
int workOnLanguages(const Options& options, Computer& computer, const Streams& streams);

}  // namespace zelvreg::console

#endif
