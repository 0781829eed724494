// Whether a repair would take something: one line and an exit status for those who manage many
// computers, and repair where the answer is yes.
#ifndef ZELVREG_CONSOLE_DETECT_COMMAND_H
#define ZELVREG_CONSOLE_DETECT_COMMAND_H

#include <functional>
#include <memory>

#include "console/Commands.h"

namespace zelvreg::console {

// The longest line in characters. The services that read it keep 2,048.
inline constexpr std::size_t longestDetection = 2000;

// Opens the computer, scans it, and prints one line. Gives problemsFound if a repair of the sure
// findings would take some of them, which it would not again after the repair. Everything else
// gives nothingFound, and so does a failure, whose line says why: a repair must not follow from it.
// Throws nothing that has to do with the computer, and prints nothing but the line.
int detect(const Options& options, const std::function<std::unique_ptr<Computer>()>& open,
           const Streams& streams);

}  // namespace zelvreg::console

#endif
