// The terminal that the console program was started from.
#ifndef ZELVREG_CONSOLE_TERMINAL_H
#define ZELVREG_CONSOLE_TERMINAL_H

#include <cstddef>
#include <string>

#include "console/Paint.h"

namespace zelvreg::console {

bool isInputTerminal();
bool isOutputTerminal();
bool isErrorTerminal();

// Whether a stream is to be colored: as was asked for; else where it is a terminal that knows
// colors, unless the environment says no.
bool isOutputColored(ColorUse asked);
bool isErrorColored(ColorUse asked);

// The number of columns of standard output, or 0 if it is no terminal.
std::size_t terminalWidth();

// A line that the user types, without its end; the empty text if there is none.
std::string typedLine();

// Makes the console show UTF-8, whatever its code page. From then on Ctrl-C does not end the
// process but sets isStopRequested(); a second Ctrl-C ends it.
void prepareTerminal();
bool isStopRequested();

}  // namespace zelvreg::console

#endif
