// The arguments of the command that merges results.
#ifndef ZELVREG_CONSOLE_MERGE_ARGUMENTS_H
#define ZELVREG_CONSOLE_MERGE_ARGUMENTS_H

#include <CLI/CLI.hpp>

#include "console/CommandLine.h"

namespace zelvreg::console {

// As a result it stands for standard input, as a file for standard output.
inline constexpr const char* standardStream = "-";

struct MergeArguments {
  // `options` outlives the parsing.
  static void addTo(CLI::App& merge, MergeOptions& options);
  // Throws UsageError if two outputs go to the same place.
  static void check(const MergeOptions& options);
};

}  // namespace zelvreg::console

#endif
