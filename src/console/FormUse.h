// How the console program uses the form: its messages, its buttons, its answers.
#ifndef ZELVREG_CONSOLE_FORM_USE_H
#define ZELVREG_CONSOLE_FORM_USE_H

#include <string>
#include <vector>

#include "console/CommandLine.h"
#include "console/Commands.h"
#include "console/Computer.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::console {

// Sends messages to the error stream and questions to the terminal, and loads the form with the
// safeguards that were chosen. `options` and `streams` must outlive the form. Throws UsageError if
// a policy of the computer contradicts a choice, or allows nothing of what is to be scanned.
void prepareForm(Form42& form, const Options& options, const Streams& streams);

// Whether the user has interrupted the command, or its time is over.
bool isGivenUp(const Options& options);
// Which of the two it was, for a line that says what ended: "cancelled", or "ended by --timeout".
const char* howGivenUp();

// Clicks Start with the ticks that were asked for. If the user interrupts, clicks Cancel and
// returns false.
bool runScanOn(Form42& form, const Options& options, const Streams& streams);

// Throws std::runtime_error if there are exclusions that could not be read: what the user has
// excluded would be found, and repaired.
void requireExclusions(const Form42& form);

// Writes lines to the error stream, safe to print, and keeps them for a result.
void tell(const std::vector<std::string>& lines, const Streams& streams);

// Note a step if there is a log, and which computer answers now.
void note(const Streams& streams, const std::string& step);
void noteComputer(const Streams& streams);

// Saves what a command has changed, and names each change that cannot be saved.
void saveAndTell(Computer& computer, const Streams& streams);

}  // namespace zelvreg::console

#endif
