// A whole offline scan beside a bare walk of the disk's SOFTWARE hive with libhivex.
#ifndef ZELVREG_BENCH_OFFLINE_BENCH_H
#define ZELVREG_BENCH_OFFLINE_BENCH_H

#include <cstddef>
#include <filesystem>

#include "Measure.h"

namespace zelvreg::bench {

struct OfflineFigures {
  std::filesystem::path hive;  // SOFTWARE, which the walk reads
  double hiveBytes = 0;        // of all hives of the disk
  Comparison times;            // first the walk, then the scan without the second look
  Comparison secondLook;       // first that scan, then one with the second look
  double walkPeak = 0;
  double scanPeak = 0;  // with the second look
  double keys = 0;      // of the hive
  double values = 0;
  double findings = 0;
};

// Each walk and each scan begins in a new process. All categories are scanned. Throws
// std::runtime_error for a disk without a SOFTWARE hive.
OfflineFigures measureOffline(const std::filesystem::path& root, std::size_t pairs);

// The seconds of one such scan without the second look.
double offlineScanSeconds(const std::filesystem::path& root);

}  // namespace zelvreg::bench

#endif
