// A whole scan beside the bare walk of what it reads, on machine folders.
#ifndef ZELVREG_BENCH_SCAN_BENCH_H
#define ZELVREG_BENCH_SCAN_BENCH_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <set>

#include "Measure.h"

namespace zelvreg::bench {

struct ScanFigures {
  Comparison times;     // first the walk, then the scan
  double findings = 0;  // rows of one scan
  double loadSeconds = 0;
  double baseMemory = 0;  // of the process before the machine was loaded
  double loadedMemory = 0;
  double loadPeak = 0;
  double scanPeak = 0;  // the most after loading
};

std::set<std::size_t> allRows();

// A scan is that of the rows, without the second look at what it has found.
//
// Loads the folder in a process of its own and compares on these rows, in so many pairs.
ScanFigures measureScan(const std::filesystem::path& folder, const std::set<std::size_t>& rows,
                        std::size_t pairs);

}  // namespace zelvreg::bench

#endif
