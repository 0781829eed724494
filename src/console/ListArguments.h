// The commands that take a few words and no options of their own: lists, languages, modes.
#ifndef ZELVREG_CONSOLE_LIST_ARGUMENTS_H
#define ZELVREG_CONSOLE_LIST_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <vector>

#include "console/CommandLine.h"

namespace zelvreg::console {

class ListArguments {
 public:
  // In the order of the help. `options` outlives the parsing.
  void addUndo(CLI::App& app, Options& options);
  void addExclude(CLI::App& app, Options& options);
  void addLanguages(CLI::App& app, Options& options);
  void addModes(CLI::App& app);

  // One of these commands was given. Throws UsageError for a mode that is the window's alone.
  void applyTo(Options& options) const;
  // Whether it was this one.
  [[nodiscard]] bool isParsed(Command command) const;

 private:
  struct PlainCommand {
    CLI::App* app;
    Command command;
  };

  CLI::App* add(CLI::App& parent, const char* name, const char* description, Command command);
  CLI::App* addForEntry(CLI::App& list, const char* name, const char* description, Command command,
                        Options& options);

  [[nodiscard]] const PlainCommand* chosen() const;

  std::vector<PlainCommand> commands;
};

}  // namespace zelvreg::console

#endif
