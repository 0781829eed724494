// The options of a repair.
#ifndef ZELVREG_CONSOLE_FIX_ARGUMENTS_H
#define ZELVREG_CONSOLE_FIX_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <vector>

#include "console/CommandLine.h"
#include "console/SafeguardArguments.h"

namespace zelvreg::console {

struct FixArguments {
  std::vector<int> kinds;
  std::size_t mostRows = 0;

  void addTo(CLI::App& fix, Options& options) {
    fix.add_option("--kinds", kinds, "repair only findings of these kind codes, as in 1,2,771")
        ->delimiter(',');
    fix.add_flag("--dry-run", options.isRehearsal,
                 "show what would be deleted and what left alone, and change nothing");
    fix.add_option("--from", options.reviewedFile,
                   "repair only what a result of scan --json lists with \"checked\": true and is "
                   "still found");
    fix.add_option("--max", mostRows,
                   "repair nothing if there are more findings to repair than this");
    SafeguardArguments::addTo(
        fix,
        {&Safeguards::protects, &Safeguards::exportsFirst, &Safeguards::touches,
         &Safeguards::asksShares, &Safeguards::asksService},
        options);
  }

  void applyTo(Options& options, bool isMostGiven) const {
    options.kinds = {kinds.begin(), kinds.end()};
    if (isMostGiven) {
      options.mostRows = mostRows;
    }
  }
};

}  // namespace zelvreg::console

#endif
