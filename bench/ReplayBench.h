// Taking over the transaction logs of a hive.
#ifndef ZELVREG_BENCH_REPLAY_BENCH_H
#define ZELVREG_BENCH_REPLAY_BENCH_H

#include <cstddef>
#include <filesystem>

namespace zelvreg::bench {

// Makes a disk with a hive of 12 MB that was not shut down cleanly, and a log with a fifth of its
// pages in 24 entries: about as much as a running Windows 10 has of SYSTEM.
void makeDirtyDisk(const std::filesystem::path& folder);

// Seconds that opening the hive of such a disk takes, its logs hashed and taken over: the median
// of so many runs, each in a process of its own. Throws std::runtime_error if they are not taken
// over.
double measureReplay(const std::filesystem::path& disk, std::size_t runs);

}  // namespace zelvreg::bench

#endif
