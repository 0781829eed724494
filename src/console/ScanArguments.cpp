#include "console/ScanArguments.h"

#include "console/OptionGroups.h"
#include "scan/CategoryTable.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

std::size_t rowNamed(std::string_view name) {
  if (const auto row = categoryNamed(name)) {
    return *row;
  }
  throw UsageError("\"" + std::string(trim(name)) +
                   "\" is not a category; choose from: " + categoryNames());
}

}  // namespace

std::string categoryNames() {
  std::string names;
  for (const Category& category : categories()) {
    names += (names.empty() ? "" : ", ") + std::string(category.optionName);
  }
  return names;
}

std::set<std::size_t> allRows() {
  std::set<std::size_t> rows;
  for (std::size_t row = 1; row <= categories().size(); ++row) {
    rows.insert(row);
  }
  return rows;
}

void ScanArguments::addScopeTo(CLI::App& command) {
  command.add_option("--only", only, "scan only these, separated by commas: " + categoryNames())
      ->type_name("NAMES")
      ->group("Which categories");
  time.addTo(command);
}

void ScanArguments::addTo(CLI::App& scan, Options& options) {
  addScopeTo(scan);
  auto* json =
      scan.add_flag("--json", isJson, "print one JSON object, in UTF-8")->group(outputGroup);
  auto* lines =
      scan.add_flag("--jsonl", isJsonLines,
                    "print JSON lines: one object for the scan, then one for each finding")
          ->excludes(json)
          ->group(outputGroup);
  scan.add_flag("--csv", isCsv, "print the findings as CSV, in UTF-8")
      ->excludes(json)
      ->excludes(lines)
      ->group(outputGroup);
  auto* report =
      scan.add_option("--report", options.reportFile, "also write the text report to this file")
          ->type_name("FILE")
          ->group(outputGroup);
  scan.add_flag("--report-evidence", options.reportsEvidence,
                "with --report: also write how sure each finding is, and why")
      ->needs(report)
      ->group(outputGroup);
  scan.add_option("--html", options.pageFile, "also write a page for a browser to this file")
      ->type_name("FILE")
      ->group(outputGroup);
  scan.add_flag("--quiet", options.isQuiet, "print nothing but messages")->group(outputGroup);
  scan.add_flag("--exit-zero", options.exitsZero, "end with 0 even if problems were found")
      ->group(outputGroup);
  NowArgument::addTo(scan, options.now);
}

void ScanArguments::applyTo(Options& options, bool isOnlyGiven) const {
  time.applyTo(options);
  options.rows = isOnlyGiven ? rowsNamed(only) : allRows();
  if (isJson) {
    options.format = Format::Json;
  } else if (isJsonLines) {
    options.format = Format::JsonLines;
  } else if (isCsv) {
    options.format = Format::Csv;
  }
}

std::set<std::size_t> rowsNamed(const std::string& names) {
  std::set<std::size_t> rows;
  for (const std::string_view name : split(names, ",")) {
    rows.insert(rowNamed(name));
  }
  if (rows.empty()) {
    throw UsageError("--only names no category; choose from: " + categoryNames());
  }
  return rows;
}

}  // namespace zelvreg::console
