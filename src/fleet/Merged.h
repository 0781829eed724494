// What the results of many computers say together. Texts are UTF-8 that may hold anything.
#ifndef ZELVREG_FLEET_MERGED_H
#define ZELVREG_FLEET_MERGED_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::fleet {

// How sure findings are, in the order in which they are told.
inline constexpr std::array<std::string_view, 3> confidences{"sure", "likely", "unsure"};
using ConfidenceCounts = std::array<std::uint64_t, confidences.size()>;
std::uint64_t sumOf(const ConfidenceCounts& counts);
void addTo(ConfidenceCounts& sum, const ConfidenceCounts& counts);

// One result that counts.
struct ComputerSummary {
  std::string file = {};  // its name without its folder
  std::string name = {};
  std::string identity = {};  // in hexadecimal; empty if there is none
  std::string product = {};
  std::string version = {};
  std::string command = {};
  std::string started = {};  // in UTC, as 2026-11-23T06:53:29Z, so that texts compare as times do
  unsigned bits = 0;
  double seconds = 0;
  bool isComplete = true;
  std::uint64_t users = 0;
  std::uint64_t findings = 0;
  std::uint64_t repaired = 0;  // by fix
  ConfidenceCounts byConfidence{};
  std::map<std::string, ConfidenceCounts> byCategory = {};
  std::vector<std::string> warnings = {};           // the first ones
  std::vector<std::string> implausible = {};        // the same
  std::map<std::string, std::uint64_t> hives = {};  // by their state
};

// One dead reference, wherever it was found: those of one category that differ only in case.
struct ReferenceSummary {
  std::string category = {};
  std::string badValue = {};
  std::string place = {};  // one of the keys in which it stands, with its root
  std::uint64_t computers = 0;
  std::uint64_t findings = 0;
  ConfidenceCounts byConfidence{};
};

struct CategorySummary {
  std::string key = {};
  std::string name = {};  // for a reader; the key as long as nobody knows it
  std::uint64_t computers = 0;
  ConfidenceCounts byConfidence{};
};

// A computer without a result, or a file that is none.
struct Failure {
  std::string file = {};  // its name without its folder
  std::string why = {};
};

// A result that does not count, because there is a newer one of the same computer.
struct Superseded {
  std::string name = {};
  std::string file = {};
  std::string started = {};
  std::string newerFile = {};
  std::string newerStarted = {};
};

// Lists are sorted, so that it does not matter in which order the results were given: computers by
// name, references from the one on most computers on, the others by file or key.
struct Merged {
  std::string version = {};  // of the program
  std::string made = {};     // when, in UTC
  bool isAnonymous = false;
  std::vector<ComputerSummary> computers = {};
  std::vector<CategorySummary> categories = {};
  std::vector<ReferenceSummary> references = {};
  // There were so many that some of those on the fewest computers are not among them, or count too
  // few computers.
  bool leavesReferencesOut = false;
  std::vector<Failure> failures = {};
  std::vector<Superseded> superseded = {};
};

// The name of a category for a reader; its key if there is no such category.
std::string nameOfCategory(const Merged& merged, const std::string& key);

// Of all computers.
struct Totals {
  std::uint64_t findings = 0;
  std::uint64_t repaired = 0;
  std::uint64_t incomplete = 0;  // computers
  ConfidenceCounts byConfidence{};
};
Totals totalsOf(const Merged& merged);

}  // namespace zelvreg::fleet

#endif
