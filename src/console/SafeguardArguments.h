// The options that lift safeguards for one call.
#ifndef ZELVREG_CONSOLE_SAFEGUARD_ARGUMENTS_H
#define ZELVREG_CONSOLE_SAFEGUARD_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <vector>

#include "console/CommandLine.h"

namespace zelvreg::console {

class SafeguardArguments {
 public:
  // A command takes the options of the safeguards that concern it, and the one for all.
  using Safeguard = bool Safeguards::*;
  // `options` outlives the parsing.
  static void addTo(CLI::App& command, const std::vector<Safeguard>& met, Options& options);
  // A choice for one safeguard wins over the choice for all.
  static void applyTo(Options& options);
};

}  // namespace zelvreg::console

#endif
