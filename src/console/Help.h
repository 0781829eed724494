// What the parser knows of commands and options, as text for a reader.
#ifndef ZELVREG_CONSOLE_HELP_H
#define ZELVREG_CONSOLE_HELP_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "console/HelpLayout.h"

namespace zelvreg::console {

// A whole help: what the command is, how it is called, its commands and options in their groups,
// and its footer. In a footer a line that begins with a blank is text, any other is a heading.
std::string helpText(const CLI::App& app, const HelpLayout& layout);

// A text laid out as a footer is.
std::string paragraphs(const std::string& text, const HelpLayout& layout);

// What an option or an argument takes, as the help names it; empty for a flag.
std::string placeholderOf(const CLI::Option& option);

// The names of an option, the short ones first; none for an argument.
std::vector<std::string> namesOf(const CLI::Option& option);

// The options or the arguments of a command, and its commands, that a reader is shown.
std::vector<const CLI::Option*> shownOptions(const CLI::App& app);
std::vector<const CLI::Option*> shownArguments(const CLI::App& app);
std::vector<const CLI::App*> shownCommands(const CLI::App& app);

// The command of this name directly below another one; null if there is none.
const CLI::App* commandBelow(const CLI::App& app, const std::string& name);

// The program's name and those that lead to a command.
std::string fullNameOf(const CLI::App& app);

}  // namespace zelvreg::console

#endif
