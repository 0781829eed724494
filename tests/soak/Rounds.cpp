#include "soak/Rounds.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

#include "soak/Footprint.h"

namespace zelvreg::fixture {
namespace {

std::ostream& operator<<(std::ostream& output, const Footprint& footprint) {
  return output << footprint.heapBytes << " bytes, " << footprint.handles << " handles, "
                << footprint.drawingObjects << " drawing objects, " << footprint.windowObjects
                << " windows";
}

}  // namespace

void goRounds(std::size_t usually, const std::function<void()>& round) {
  const char* asked = std::getenv("ZELVREG_ROUNDS");
  const std::size_t rounds = asked == nullptr ? usually : std::strtoul(asked, nullptr, 10);
  const std::size_t first = rounds / 4 + 1;
  Footprint early;
  for (std::size_t number = 1; number <= rounds; ++number) {
    round();
    if (testing::Test::HasFailure()) {
      return;
    }
    if (number == first) {
      early = footprintNow();
    }
  }
  const Footprint late = footprintNow();
  std::cout << "after " << first << " rounds: " << early << "\nafter " << rounds
            << " rounds: " << late << std::endl;
  EXPECT_LE(late.handles, early.handles);
  EXPECT_LE(late.drawingObjects, early.drawingObjects);
  EXPECT_LE(late.windowObjects, early.windowObjects);
  // Texts and tables may be somewhat longer now; what each round leaves is soon more than that.
  constexpr std::size_t room = 16 * 1024;
  EXPECT_LE(late.heapBytes, early.heapBytes + room);
}

}  // namespace zelvreg::fixture
