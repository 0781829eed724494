// The options that scans and repairs share.
#ifndef ZELVREG_CONSOLE_SCAN_ARGUMENTS_H
#define ZELVREG_CONSOLE_SCAN_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <cstddef>
#include <set>
#include <string>

#include "console/CommandLine.h"
#include "console/TimeArguments.h"

namespace zelvreg::console {

struct ScanArguments {
  std::string only;
  bool isJson = false;
  bool isJsonLines = false;
  bool isCsv = false;
  TimeArguments time;

  // `options` outlives the parsing.
  void addTo(CLI::App& scan, Options& options);
  // Only what is scanned, and for how long.
  void addScopeTo(CLI::App& command);
  // Throws UsageError if a category does not exist, or the time is wrong.
  void applyTo(Options& options, bool isOnlyGiven) const;
};

// The names of all categories, with commas between.
std::string categoryNames();

// The numbers of all their rows.
std::set<std::size_t> allRows();

}  // namespace zelvreg::console

#endif
