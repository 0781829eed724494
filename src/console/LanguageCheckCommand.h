// The command that checks a language file, for those who translate.
#ifndef ZELVREG_CONSOLE_LANGUAGE_CHECK_COMMAND_H
#define ZELVREG_CONSOLE_LANGUAGE_CHECK_COMMAND_H

#include "console/CommandLine.h"
#include "console/Commands.h"

namespace zelvreg::console {

// Prints a line for each problem; needs no computer. The exit status is nothingFound or
// problemsFound; hints are printed, but are no problems. Throws std::runtime_error with one line if
// the file cannot be read, or its charset is not known.
int checkLanguage(const Options& options, const Streams& streams);

}  // namespace zelvreg::console

#endif
