// The options that limit how long a command may take, and that say what time it tells.
#ifndef ZELVREG_CONSOLE_TIME_ARGUMENTS_H
#define ZELVREG_CONSOLE_TIME_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <string>

#include "console/CommandLine.h"

namespace zelvreg::console {

// The time starts when the option is applied.
struct TimeArguments {
  double seconds = 0;

  void addTo(CLI::App& command) {
    option =
        command.add_option("--timeout", seconds, "give up after this time, with exit status 2")
            ->type_name("SECONDS")
            ->group("Limits");
  }

  void applyTo(Options& options) const {
    if (option->count() > 0) {
      options.deadline = deadlineAfter(limitOf(seconds));
    }
  }

  // Throws UsageError for a time that none can keep to.
  static std::chrono::duration<double> limitOf(double seconds) {
    if (!(seconds > 0)) {
      throw UsageError("--timeout takes a number of seconds above 0");
    }
    constexpr double century = 3.2e9;  // so that no number leads beyond the clock
    return std::chrono::duration<double>(std::min(seconds, century));
  }

  static std::chrono::steady_clock::time_point deadlineAfter(std::chrono::duration<double> limit) {
    return std::chrono::steady_clock::now() +
           std::chrono::duration_cast<std::chrono::steady_clock::duration>(limit);
  }

  CLI::Option* option = nullptr;
};

// The time in UTC, as results tell it: "2026-11-23T06:53:29Z".
std::string utcNow();

// With it the same input gives the same bytes.
struct NowArgument {
  // `now` outlives the parsing. Parsing throws UsageError for a text that is no such time.
  static void addTo(CLI::App& command, std::string& now);
};

}  // namespace zelvreg::console

#endif
