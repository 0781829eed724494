// The form as the console program works it: its messages, its buttons, its answers.
#ifndef ZELVREG_CONSOLE_FORM_USE_H
#define ZELVREG_CONSOLE_FORM_USE_H

#include <string>
#include <vector>

#include "console/CommandLine.h"
#include "console/Commands.h"
#include "console/Computer.h"
#include "form/Form42.h"

namespace zelvreg::console {

// Gives messages to the error stream and questions to the terminal, and loads the form with the
// safeguards that were chosen. `options` and `streams` must outlive the form. Throws UsageError for
// a choice that a policy of the computer contradicts.
void prepareForm(Form42& form, const Options& options, const Streams& streams);

// Whether the user has interrupted the command, or its time is over.
bool isGivenUp(const Options& options);
// Which of the two it was, for a line that says what ended: "cancelled", or "ended by --timeout".
const char* howGivenUp();

// Presses Start with the ticks that were asked for, and Cancel if the user interrupts: false then.
bool runScanOn(Form42& form, const Options& options, const Streams& streams);

// Lines for the user on the error stream, made harmless.
void tell(const std::vector<std::string>& lines, const Streams& streams);

// Keeps what a command has changed, and tells of each change that has no place to be kept in.
void saveAndTell(Computer& computer, const Streams& streams);

}  // namespace zelvreg::console

#endif
