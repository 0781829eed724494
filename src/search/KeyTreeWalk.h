// The walk of a search over a key and everything below it.
#ifndef ZELVREG_SEARCH_KEY_TREE_WALK_H
#define ZELVREG_SEARCH_KEY_TREE_WALK_H

#include <string>

#include "roots/Roots.h"
#include "scan/Findings.h"
#include "search/KeyLister.h"

namespace zelvreg {

struct Form42;

// One search while it runs.
struct SearchState {
  bool testsKeys = false;
  bool testsValues = false;
  bool testsData = false;
  HiveHandle root = HiveHandle::Unknown;
  int category = 0;  // of what is found; see Form42::searchCategory
  ScannerRun run;    // `found` counts dead paths alone
  ListerState lister;
};

// The row of View1 that counts a category's findings; 0 for a category that has none.
std::size_t rowOfSearchCategory(int category);

// Tests names and data below the root from `key` on (empty for all), depth first, subkeys before
// the key's own values. A name that matches is listed as it is: it is not dead, has no kind code,
// and is not counted as a problem. A text that matches is listed if the path in it is dead.
// `location` is the path, `badValue` the name of the value, `subKey` its key, as a repair needs
// them. Keys that cannot be opened are skipped.
void SearchKeyTree(Form42& form, SearchState& search, const std::string& key);

}  // namespace zelvreg

#endif
