// Merges results of many computers.
#ifndef ZELVREG_FLEET_MERGING_H
#define ZELVREG_FLEET_MERGING_H

#include <functional>
#include <istream>
#include <memory>
#include <string>
#include <vector>

#include "fleet/Merged.h"
#include "fleet/Pseudonyms.h"
#include "fleet/ReferenceTable.h"

namespace zelvreg::fleet {

// One file with results, one behind the other.
struct ResultSource {
  std::string path = {};  // as lines for a reader name it
  std::string file = {};  // as outputs name it: without its folder
  // It has no result but says in its first line why there is none.
  bool isFailureNote = false;
  // Opens it at its start; null if it cannot be opened. Called twice.
  std::function<std::unique_ptr<std::istream>()> open = {};
};

// What is told while results are merged; the lines have no end.
struct MergeListener {
  // A source is no result, or no whole one, from some place on. What stood before it counts.
  std::function<void(const std::string& line)> onBadSource = [](const std::string&) {};
  std::function<void(const std::string& line)> onSuperseded = [](const std::string&) {};
};

// The memory that this takes grows with computers and distinct references, not with findings: each
// source is read once to learn which results count, and once more for the findings of those. Of two
// results of one computer, by identity and name, the newer one counts; a computer without an
// identity is another one each time. `pseudonyms` gathers the names that the results hold, if it is
// there. Throws std::runtime_error with one line if a source changes while it is read.
Merged mergeResults(std::vector<ResultSource> sources, const MergeListener& listener,
                    Pseudonyms* pseudonyms = nullptr, ReferenceLimits limits = {});

// Sorts all lists of a merged result, as Merged.h says.
void sortLists(Merged& merged);

}  // namespace zelvreg::fleet

#endif
