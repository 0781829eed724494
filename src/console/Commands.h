// The commands of the console program. Each has its own form.
#ifndef ZELVREG_CONSOLE_COMMANDS_H
#define ZELVREG_CONSOLE_COMMANDS_H

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "console/CommandLine.h"
#include "console/Computer.h"
#include "console/RunLog.h"
#include "console/Table.h"

namespace zelvreg::console {

// The exit statuses.
inline constexpr int nothingFound = 0;
inline constexpr int problemsFound = 1;
inline constexpr int failed = 2;

// Where a command writes, and what it knows about the terminal.
struct Streams {
  std::ostream& out;
  std::ostream& error;
  TableLayout tables = {};
  bool showsProgress = false;
  // The lines that were told of what a command has done, for a result that repeats them.
  std::shared_ptr<std::vector<std::string>> told = std::make_shared<std::vector<std::string>>();
  // Where each step is noted; null for nowhere.
  std::shared_ptr<RunLog> log = {};
};

// Carries out what was asked on an opened computer and gives the exit status. Throws
// std::runtime_error with one line if it fails.
int runCommand(const Options& options, Computer& computer, const Streams& streams);

}  // namespace zelvreg::console

#endif
