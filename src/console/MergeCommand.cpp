#include "console/MergeCommand.h"

#include <algorithm>
#include <optional>
#include <random>

#include "console/FormUse.h"
#include "console/HostFile.h"
#include "console/HostReplace.h"
#include "console/MergeArguments.h"
#include "console/ResultFiles.h"
#include "console/ResultPage.h"
#include "console/Table.h"
#include "console/TimeArguments.h"
#include "fleet/MergedText.h"
#include "fleet/Merging.h"
#include "fleet/Page.h"

namespace zelvreg::console {
namespace {

// The rows of each table on a terminal.
constexpr std::size_t mostRows = 15;

std::string randomKey() {
  std::random_device random;
  std::string key;
  for (int number = 0; number < 8; ++number) {
    key += std::to_string(random()) + " ";
  }
  return key;
}

std::string countOf(std::uint64_t number, const char* one, const char* many) {
  return std::to_string(number) + " " + (number == 1 ? one : many);
}

void addCounts(std::vector<std::string>& cells, const fleet::ConfidenceCounts& counts) {
  for (const std::uint64_t count : counts) {
    cells.push_back(std::to_string(count));
  }
}

std::string categoryTable(const fleet::Merged& merged, const TableLayout& layout) {
  Table table({{"Category"},
               {"Computers", true},
               {"Findings", true},
               {"Sure", true},
               {"Likely", true},
               {"Unsure", true}});
  for (const fleet::CategorySummary& category : merged.categories) {
    std::vector<std::string> cells{category.name, std::to_string(category.computers),
                                   std::to_string(fleet::sumOf(category.byConfidence))};
    addCounts(cells, category.byConfidence);
    table.addRow(cells);
  }
  return table.text(layout);
}

std::string referenceTable(const fleet::Merged& merged, const TableLayout& layout) {
  Table table({{"Computers", true}, {"Findings", true}, {"Category"}, {"Reference", false, true}});
  for (std::size_t row = 0; row < std::min(merged.references.size(), mostRows); ++row) {
    const fleet::ReferenceSummary& reference = merged.references[row];
    table.addRow({std::to_string(reference.computers), std::to_string(reference.findings),
                  fleet::nameOfCategory(merged, reference.category), reference.badValue});
  }
  return table.text(layout);
}

std::string failureTable(const fleet::Merged& merged, const TableLayout& layout) {
  Table table({{"File"}, {"Why it has no result", false, true}});
  for (const fleet::Failure& failure : merged.failures) {
    table.addRow({failure.file, failure.why});
  }
  return table.text(layout);
}

void printTables(const fleet::Merged& merged, const Streams& streams) {
  const fleet::Totals totals = fleet::totalsOf(merged);
  if (!merged.categories.empty()) {
    streams.out << categoryTable(merged, streams.tables) << "\n"
                << referenceTable(merged, streams.tables) << "\n";
  }
  if (!merged.failures.empty()) {
    streams.out << failureTable(merged, streams.tables) << "\n";
  }
  streams.out << countOf(merged.computers.size(), "computer", "computers") << " ("
              << totals.incomplete << " incomplete), "
              << countOf(merged.failures.size(), "failure", "failures") << ", "
              << countOf(totals.findings, "problem", "problems") << ", "
              << countOf(merged.references.size(), "different reference", "different references")
              << ".\n";
}

void writeTo(const std::string& file, const std::string& text, const Streams& streams) {
  if (file == standardStream) {
    streams.out << text;
  } else if (!file.empty()) {
    writeHostFile(file, text);
  }
}

void write(const fleet::Merged& merged, const MergeOptions& options, const Streams& streams) {
  if (options.json.empty() && options.csv.empty() && options.html.empty()) {
    printTables(merged, streams);
    return;
  }
  if (!options.json.empty()) {
    writeTo(options.json, fleet::jsonText(merged), streams);
  }
  if (!options.csv.empty()) {
    writeTo(options.csv, fleet::csvText(merged), streams);
  }
  if (!options.html.empty()) {
    const bool isPrinted = options.csv == standardStream;
    writeTo(options.html,
            fleet::pageText(merged, isPrinted ? "" : hostText(hostPath(options.csv).filename())),
            streams);
  }
}

}  // namespace

int merge(const MergeOptions& options, std::istream& input, const Streams& streams) {
  SpooledInput spooled;
  std::size_t badSources = 0;
  const auto tellLine = [&streams](const std::string& line) { tell({line}, streams); };
  const fleet::MergeListener listener{.onBadSource =
                                          [&](const std::string& line) {
                                            ++badSources;
                                            tellLine(line);
                                          },
                                      .onSuperseded = tellLine};
  std::optional<fleet::Pseudonyms> pseudonyms;
  if (options.isAnonymous) {
    pseudonyms.emplace(randomKey());
  }
  fleet::Merged merged = fleet::mergeResults(resultSources(options.results, input, spooled),
                                             listener, pseudonyms ? &*pseudonyms : nullptr);
  complete(merged, options.now.empty() ? utcNow() : options.now);
  if (merged.leavesReferencesOut) {
    tellLine(
        "there are so many different references that some of those on the fewest computers "
        "were left out");
  }
  if (badSources > 0 && merged.computers.empty() && merged.failures.size() == badSources) {
    // An earlier report is worth more than one of nothing.
    tellLine("no result could be merged, so nothing was written");
    return failed;
  }
  if (pseudonyms) {
    pseudonyms->applyTo(merged);
  }
  write(merged, options, streams);
  return badSources > 0 ? failed : nothingFound;
}

}  // namespace zelvreg::console
