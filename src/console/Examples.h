// What stands below the help of the program and of each command.
#ifndef ZELVREG_CONSOLE_EXAMPLES_H
#define ZELVREG_CONSOLE_EXAMPLES_H

#include <CLI/CLI.hpp>
#include <string>

namespace zelvreg::console {

// Gives footers to a program and all its commands: examples, and below the program's the exit
// statuses and where to read on.
void addFooters(CLI::App& app);

// What the program shows where no command was given.
std::string shortHelp();

}  // namespace zelvreg::console

#endif
