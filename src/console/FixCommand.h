// Repairing from the command line.
#ifndef ZELVREG_CONSOLE_FIX_COMMAND_H
#define ZELVREG_CONSOLE_FIX_COMMAND_H

#include "console/Commands.h"
#include "console/Computer.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::console {

// Gives the exit status, and throws std::runtime_error with one line on failure.
int fix(const Options& options, Computer& computer, const Streams& streams);

class UserTurns;

// The scans before a repair, of all who can be repaired. Throws std::runtime_error with one line if
// nothing must be repaired, or if it was given up.
void scanToRepair(UserTurns& turns, const Options& options, const Computer& computer);

// A repair must not work on a registry of which a part is damaged, or whose logs hold newer
// content. Throws std::runtime_error with one line then.
void refuseUnlessWhole(const Computer& computer);

// The message for a repair that the user has interrupted.
// Some changes may have been made before.
std::string interruptionText(bool hasBegun, const Computer& computer);

// Writes a line to the error stream for each thing that the last repair left alone. `user` is the
// one whose repair it was if users are told apart.
void tellWhatWasLeftAlone(const Form42& form, const Streams& streams,
                          const std::optional<ComputerUser>& user = {});

}  // namespace zelvreg::console

#endif
