// The commands that take a few words at most: lists, languages, modes, the doctor.
#ifndef ZELVREG_CONSOLE_LIST_ARGUMENTS_H
#define ZELVREG_CONSOLE_LIST_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <optional>
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
  void addDoctor(CLI::App& app, Options& options);

  // Which of these commands was given, if any.
  [[nodiscard]] std::optional<Command> command() const;
  // One of these commands was given. Throws UsageError for a mode that is the window's alone.
  void applyTo(Options& options) const;

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
