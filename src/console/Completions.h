// Scripts by which a shell completes the program's command lines.
#ifndef ZELVREG_CONSOLE_COMPLETIONS_H
#define ZELVREG_CONSOLE_COMPLETIONS_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace zelvreg::console {

// The shells that there are scripts for.
std::vector<std::string> completedShells();

// The script for one of them, made from what the parser knows: it completes commands, options, and
// the values that Placeholders.h tells. It needs nothing but the shell itself.
std::string completionScript(const CLI::App& app, const std::string& shell);

}  // namespace zelvreg::console

#endif
