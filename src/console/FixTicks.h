// Which rows a repair from the command line takes.
#ifndef ZELVREG_CONSOLE_FIX_TICKS_H
#define ZELVREG_CONSOLE_FIX_TICKS_H

#include <cstddef>

#include "console/CommandLine.h"
#include "console/Commands.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::console {

// Ticks the rows of a scan that were asked for and are sure enough, and unticks all others. Tells
// on the error stream how sure they are and how many are left alone. Returns how many are ticked.
// Throws std::runtime_error with one line if the reviewed result cannot be read.
std::size_t tickForRepair(Form42& form, const Options& options, const Streams& streams);

}  // namespace zelvreg::console

#endif
