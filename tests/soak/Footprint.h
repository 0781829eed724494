// What a process holds at the moment, to compare with what it holds after thousands of rounds.
#ifndef ZELVREG_TESTS_SOAK_FOOTPRINT_H
#define ZELVREG_TESTS_SOAK_FOOTPRINT_H

#include <cstddef>

namespace zelvreg::fixture {

struct Footprint {
  std::size_t heapBytes = 0;  // in use, without what the heap keeps for later
  std::size_t handles = 0;    // of the system; on Linux, open files
  // Windows only: numbers that grow with each of them.
  std::size_t drawingObjects = 0;
  std::size_t windowObjects = 0;
};

Footprint footprintNow();

}  // namespace zelvreg::fixture

#endif
