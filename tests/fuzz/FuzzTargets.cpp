#include <algorithm>
#include <vector>

#include "fuzz/FuzzTarget.h"

namespace zelvreg::fuzz {

std::span<const FuzzTarget> fuzzTargets() {
  static const std::vector<FuzzTarget> all = [] {
    std::vector<FuzzTarget> targets;
    for (const auto part :
         {hiveTargets(), folderTargets(), userFileTargets(), textTargets(), foreignTargets()}) {
      targets.insert(targets.end(), part.begin(), part.end());
    }
    return targets;
  }();
  return all;
}

}  // namespace zelvreg::fuzz
