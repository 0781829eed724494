#include "console/MergeArguments.h"

#include "console/OptionGroups.h"
#include "console/TimeArguments.h"

namespace zelvreg::console {

void MergeArguments::addTo(CLI::App& merge, MergeOptions& options) {
  merge
      .add_option("RESULT", options.results,
                  "what scan --json or --jsonl printed: files, folders with such files, or - for "
                  "standard input")
      ->required();
  const auto addOutput = [&merge](const char* name, std::string& file, const char* description) {
    merge.add_option(name, file, description)->type_name("FILE")->group(outputGroup);
  };
  addOutput("--html", options.html, "write one page for a browser, with charts and tables");
  addOutput("--csv", options.csv, "write all references as CSV, in UTF-8; - prints them");
  addOutput("--json", options.json, "write one JSON object, in UTF-8; - prints it");
  merge
      .add_flag("--anonymous", options.isAnonymous,
                "give computers and users other names, drawn anew for each run")
      ->group(outputGroup);
  NowArgument::addTo(merge, options.now);
}

void MergeArguments::check(const MergeOptions& options) {
  const auto clash = [](const std::string& one, const std::string& other) {
    return !one.empty() && one == other;
  };
  if (clash(options.json, options.csv) || clash(options.json, options.html) ||
      clash(options.csv, options.html)) {
    throw UsageError("two outputs go to the same place; give each a file of its own");
  }
}

}  // namespace zelvreg::console
