#include "fleet/Merged.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace zelvreg::fleet {

void addTo(ConfidenceCounts& sum, const ConfidenceCounts& counts) {
  std::ranges::transform(sum, counts, sum.begin(), std::plus<>());
}

std::string nameOfCategory(const Merged& merged, const std::string& key) {
  const auto category = std::ranges::find(merged.categories, key, &CategorySummary::key);
  return category == merged.categories.end() ? key : category->name;
}

std::uint64_t sumOf(const ConfidenceCounts& counts) {
  return std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
}

Totals totalsOf(const Merged& merged) {
  Totals totals;
  for (const ComputerSummary& computer : merged.computers) {
    totals.findings += computer.findings;
    totals.repaired += computer.repaired;
    totals.incomplete += computer.isComplete ? 0 : 1;
    addTo(totals.byConfidence, computer.byConfidence);
  }
  return totals;
}

}  // namespace zelvreg::fleet
