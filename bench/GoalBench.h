// Measures all goals that can be measured without the window, and how the times grow with size.
#ifndef ZELVREG_BENCH_GOAL_BENCH_H
#define ZELVREG_BENCH_GOAL_BENCH_H

#include <cstddef>
#include <filesystem>
#include <ostream>
#include <span>

#include "DiskMaker.h"

namespace zelvreg::bench {

struct GoalSizes {
  std::size_t keys = 1'000'000;
  std::size_t secondLookKeys = 100'000;
  DiskSize disk;
};

// Measures in so many pairs and prints tables in Markdown: the goals, and what they were measured
// with. The disk is `offlineRoot`, or one that is made if that is empty. Throws std::runtime_error
// with one line.
void benchGoals(std::ostream& output, const GoalSizes& sizes,
                const std::filesystem::path& offlineRoot, std::size_t pairs);

// Prints a line for each size, with tabs between: the keys, then microseconds a key of opening,
// plain loops, a scan, a scan with the second look, and a search.
void benchScaling(std::ostream& output, std::span<const std::size_t> sizes, std::size_t pairs);

}  // namespace zelvreg::bench

#endif
