#include <malloc.h>

#include <filesystem>
#include <iterator>

#include "soak/Footprint.h"

namespace zelvreg::fixture {

Footprint footprintNow() {
  const std::filesystem::directory_iterator files("/proc/self/fd");
  const struct mallinfo2 heap = mallinfo2();
  return {.heapBytes = heap.uordblks + heap.hblkhd,
          .handles = static_cast<std::size_t>(std::distance(begin(files), end(files)))};
}

}  // namespace zelvreg::fixture
