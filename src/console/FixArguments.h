// The options of a repair.
#ifndef ZELVREG_CONSOLE_FIX_ARGUMENTS_H
#define ZELVREG_CONSOLE_FIX_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "console/CommandLine.h"
#include "console/SafeguardArguments.h"
#include "evidence/Reasons.h"

namespace zelvreg::console {

struct FixArguments {
  std::vector<int> kinds;
  std::size_t mostRows = 0;
  static constexpr const char* choiceGroup = "What is repaired";

  void addTo(CLI::App& fix, Options& options) {
    fix.add_option("--kinds", kinds, "repair only findings of these kind codes, as in 1,2,771")
        ->delimiter(',')
        ->type_name("CODES")
        ->group(choiceGroup);
    fix.add_flag("--dry-run", options.isRehearsal,
                 "show what would be deleted and what left alone, and change nothing")
        ->group("Before it repairs");
    fix.add_option("--from", options.reviewedFile,
                   "repair only what a result of scan --json lists with \"checked\": true and is "
                   "still found")
        ->type_name("RESULT.json")
        ->group(choiceGroup);
    fix.add_option("--max", mostRows,
                   "repair nothing if there are more findings to repair than this")
        ->type_name("N")
        ->group("Before it repairs");
    addConfidence(fix, options);
    SafeguardArguments::addTo(
        fix,
        {&Safeguards::careful, &Safeguards::protects, &Safeguards::exportsFirst,
         &Safeguards::touches, &Safeguards::asksShares, &Safeguards::asksService},
        options);
  }

  void applyTo(Options& options, bool isMostGiven) const {
    options.kinds = {kinds.begin(), kinds.end()};
    if (isMostGiven) {
      options.mostRows = mostRows;
    }
    const bool takesAll = std::ranges::any_of(
        options.safeguardChoices,
        [](const SafeguardChoice& choice) { return std::string_view(choice.option) == "--all"; });
    if (takesAll && options.leastSure.value_or(Confidence::Unsure) != Confidence::Unsure) {
      throw UsageError(std::string("--all takes every finding, and --min-confidence ") +
                       codeOf(*options.leastSure) + " does not; give one of them");
    }
  }

 private:
  // Down to the unsure ones is the same as to lift the safeguard.
  static void addConfidence(CLI::App& fix, Options& options) {
    fix.add_option_function<std::string>(
           "--min-confidence",
           [&options](const std::string& code) {
             options.leastSure = confidenceOfCode(code);
             if (options.leastSure == Confidence::Unsure) {
               options.safeguardChoices.push_back({.safeguard = &Safeguards::careful,
                                                   .value = false,
                                                   .option = "--min-confidence unsure"});
             }
           },
           "repair only findings that are at least this sure to be dead; likely by default")
        ->check(CLI::IsMember(
            {codeOf(Confidence::Sure), codeOf(Confidence::Likely), codeOf(Confidence::Unsure)}))
        ->type_name(std::string(codeOf(Confidence::Sure)) + "|" + codeOf(Confidence::Likely) + "|" +
                    codeOf(Confidence::Unsure))
        ->group(choiceGroup);
  }
};

}  // namespace zelvreg::console

#endif
