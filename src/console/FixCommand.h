// Repairing from the command line.
#ifndef ZELVREG_CONSOLE_FIX_COMMAND_H
#define ZELVREG_CONSOLE_FIX_COMMAND_H

#include "console/Commands.h"
#include "console/Computer.h"
#include "form/Form42.h"

namespace zelvreg::console {

// Gives the exit status, and throws std::runtime_error with one line on failure.
int fix(const Options& options, Computer& computer, const Streams& streams);

// A repair must not start from half of a registry, nor write to one that others still hold news of:
// throws std::runtime_error then.
void refuseUnlessWhole(const Computer& computer);

// What to say of a repair that the user has interrupted.
std::string interruptionText(const RepairOutcome& outcome, const Computer& computer);

// Each thing that the last repair was to take and has not, a line each on the error stream.
void tellWhatWasLeftAlone(const Form42& form, const Streams& streams);

}  // namespace zelvreg::console

#endif
