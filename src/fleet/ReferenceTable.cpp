#include "fleet/ReferenceTable.h"

#include <algorithm>
#include <tuple>

#include "text/Text.h"

namespace zelvreg::fleet {
std::uint32_t ReferenceTable::numberOf(const std::string& category) {
  const auto known = std::ranges::find(categories, category);
  if (known != categories.end()) {
    return static_cast<std::uint32_t>(known - categories.begin());
  }
  // Those of further categories count as of the last one.
  if (categories.size() < mostCategories) {
    categories.push_back(category);
  }
  return static_cast<std::uint32_t>(categories.size() - 1);
}

void ReferenceTable::add(const SeenFinding& finding) {
  const std::uint32_t category = numberOf(finding.category);
  const std::string place =
      finding.rootName + (finding.rootName.empty() ? "" : "\\") + finding.subKey;
  const auto [at, isNew] =
      entries.try_emplace(std::to_string(category) + ":" + lowerCase(finding.badValue));
  Entry& entry = at->second;
  if (isNew) {
    entry.category = category;
    entry.badValue = finding.badValue;
    entry.place = place;
    bytes += at->first.size() + entry.badValue.size() + entry.place.size();
  } else if (std::tie(finding.badValue, place) < std::tie(entry.badValue, entry.place)) {
    // The same one whichever result is read first.
    bytes += finding.badValue.size() + place.size() - entry.badValue.size() - entry.place.size();
    entry.badValue = finding.badValue;
    entry.place = place;
  }
  entry.computers += entry.lastComputer == computer ? 0 : 1;
  entry.lastComputer = computer;
  ++entry.findings;
  ++entry.byConfidence[finding.confidence];
  if (entries.size() > limits.references || bytes > limits.bytes) {
    dropRarest();
  }
}

void ReferenceTable::dropRarest() {
  std::vector<Entries::const_iterator> order;
  order.reserve(entries.size());
  for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
    order.push_back(entry);
  }
  std::ranges::sort(order, [](const auto& left, const auto& right) {
    return std::tie(right->second.computers, right->second.findings, left->first) <
           std::tie(left->second.computers, left->second.findings, right->first);
  });
  std::size_t keptBytes = 0;
  std::size_t kept = 0;
  for (const auto& entry : order) {
    const std::size_t size =
        entry->first.size() + entry->second.badValue.size() + entry->second.place.size();
    if (kept < limits.references / 2 && keptBytes + size <= limits.bytes / 2) {
      keptBytes += size;
      ++kept;
    } else {
      entries.erase(entry);
    }
  }
  bytes = keptBytes;
  hasDropped = true;
}

std::vector<ReferenceSummary> ReferenceTable::take() {
  std::vector<ReferenceSummary> references;
  references.reserve(entries.size());
  while (!entries.empty()) {
    auto node = entries.extract(entries.begin());
    Entry& entry = node.mapped();
    ReferenceSummary& reference = references.emplace_back();
    reference.category = categories[entry.category];
    reference.badValue = std::move(entry.badValue);
    reference.place = std::move(entry.place);
    reference.computers = entry.computers;
    reference.findings = entry.findings;
    std::ranges::copy(entry.byConfidence, reference.byConfidence.begin());
  }
  return references;
}

}  // namespace zelvreg::fleet
