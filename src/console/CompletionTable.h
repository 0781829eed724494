// What can follow where in a command line, as the scripts of all shells need it.
#ifndef ZELVREG_CONSOLE_COMPLETION_TABLE_H
#define ZELVREG_CONSOLE_COMPLETION_TABLE_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "console/Placeholders.h"

namespace zelvreg::console {

struct CompletedWord {
  std::string word;
  std::string meaning;
};

struct CompletedOption {
  std::vector<std::string> names;
  std::string meaning;
  bool takesValue = false;
  Offer value = {};
};

struct CompletedCommand {
  // The names that lead here, each with a blank in front; the program's own is empty.
  std::string path;
  std::vector<CompletedWord> commands;
  std::vector<CompletedOption> options;  // its own; the program's may follow each command
  Offer argument = {};
};

// The program first. Throws std::logic_error if a placeholder is not known to offerFor().
std::vector<CompletedCommand> completionTable(const CLI::App& app);

}  // namespace zelvreg::console

#endif
