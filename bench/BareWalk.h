// The work below a scan and nothing else: the same keys and values read and the same files tested
// through the same Windows calls, without lists, form or resolver.
#ifndef ZELVREG_BENCH_BARE_WALK_H
#define ZELVREG_BENCH_BARE_WALK_H

#include <cstddef>
#include <set>

namespace zelvreg::bench {

// What a walk came by; it also keeps the compiler from leaving the walk out.
struct WalkCounts {
  std::size_t entries = 0;  // names of keys and of values
  std::size_t values = 0;   // whose data was read
  std::size_t files = 0;    // that were asked for
  std::size_t dead = 0;     // of them
};

// Walks what the categories of these rows read, on the computer in force.
WalkCounts bareWalk(const std::set<std::size_t>& rows);

}  // namespace zelvreg::bench

#endif
