// The arguments of a search.
#ifndef ZELVREG_CONSOLE_SEARCH_ARGUMENTS_H
#define ZELVREG_CONSOLE_SEARCH_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <string>

#include "console/CommandLine.h"
#include "console/TimeArguments.h"

namespace zelvreg::console {

struct SearchArguments {
  std::string root = "all";
  std::string mode = "any";
  bool isJson = false;
  TimeArguments time;

  // `options` outlives the parsing.
  void addTo(CLI::App& search, Options& options);
  // Throws UsageError if the root or the mode does not exist.
  void applyTo(Options& options) const;
};

}  // namespace zelvreg::console

#endif
