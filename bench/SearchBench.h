// A registry search beside a bare enumeration of the same keys, on machine folders.
#ifndef ZELVREG_BENCH_SEARCH_BENCH_H
#define ZELVREG_BENCH_SEARCH_BENCH_H

#include <cstddef>
#include <filesystem>

#include "Measure.h"

namespace zelvreg::bench {

struct SearchFigures {
  Comparison times;     // first the enumeration with its reads, then the search
  double keysOnly = 0;  // seconds of an enumeration that reads no values
  double keys = 0;
  double findings = 0;
  double loadedMemory = 0;
  double searchPeak = 0;  // the most after loading
};

// Loads the folder in a process of its own and searches the machine's root as the form's defaults
// ask, in so many pairs.
SearchFigures measureSearch(const std::filesystem::path& folder, std::size_t pairs);

}  // namespace zelvreg::bench

#endif
