// Counts dead references over many computers.
#ifndef ZELVREG_FLEET_REFERENCE_TABLE_H
#define ZELVREG_FLEET_REFERENCE_TABLE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "fleet/Merged.h"
#include "fleet/ResultReader.h"

namespace zelvreg::fleet {

// How much a table may hold: beyond either, it drops the references that are on the fewest
// computers until half of it is left. A fleet has some ten thousand distinct ones; only a result
// that somebody made to harm has more than this.
struct ReferenceLimits {
  std::size_t references = 200'000;
  std::size_t bytes = 96'000'000;
};

class ReferenceTable {
 public:
  explicit ReferenceTable(ReferenceLimits tableLimits = {}) : limits(tableLimits) {}

  // The findings that follow are those of another computer.
  void beginComputer() { ++computer; }
  void add(const SeenFinding& finding);

  // Whether any was dropped. One that was dropped and found again counts from then on.
  [[nodiscard]] bool leavesOut() const { return hasDropped; }
  // Takes all references out, in no order.
  std::vector<ReferenceSummary> take();

 private:
  struct Entry {
    std::string badValue;
    std::string place;
    std::uint64_t lastComputer = 0;
    std::uint32_t category = 0;
    std::uint32_t computers = 0;
    std::uint32_t findings = 0;
    std::array<std::uint32_t, confidences.size()> byConfidence{};
  };
  using Entries = std::unordered_map<std::string, Entry>;

  std::uint32_t numberOf(const std::string& category);
  void dropRarest();

  ReferenceLimits limits;
  std::uint64_t computer = 0;
  std::vector<std::string> categories;  // by their numbers
  Entries entries;                      // by category and text in lower case
  std::size_t bytes = 0;                // of the texts of all entries
  bool hasDropped = false;
};

}  // namespace zelvreg::fleet

#endif
