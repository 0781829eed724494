// Opening a machine folder: its time and its memory.
#ifndef ZELVREG_BENCH_OPENING_BENCH_H
#define ZELVREG_BENCH_OPENING_BENCH_H

#include <cstddef>
#include <filesystem>

namespace zelvreg::bench {

struct OpeningFigures {
  double seconds = 0;  // medians
  double bytes = 0;    // of memory that the process holds afterwards, more than before
};

// Opens the folder so many times, each time in a process of its own.
OpeningFigures measureOpening(const std::filesystem::path& folder, std::size_t runs);

}  // namespace zelvreg::bench

#endif
