// The command that puts the results of many computers together.
#ifndef ZELVREG_CONSOLE_MERGE_COMMAND_H
#define ZELVREG_CONSOLE_MERGE_COMMAND_H

#include <istream>

#include "console/CommandLine.h"
#include "console/Commands.h"

namespace zelvreg::console {

// Merges what was asked for and writes it, or prints tables if no file is asked for; needs no
// computer. `input` is standard input. The exit status is `failed` if a file is no result, which is
// told in one line and does not keep the others from being merged, else nothingFound. Throws
// std::runtime_error with one line.
int merge(const MergeOptions& options, std::istream& input, const Streams& streams);

}  // namespace zelvreg::console

#endif
