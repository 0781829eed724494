#include "machine/base/Arena.h"

#include <gtest/gtest.h>

#include <set>

namespace zelvreg::machine {
namespace {

TEST(Arena, RoomThatWasGivenBackIsHandedOutAgainInItsSizeAlone) {
  Arena arena;
  std::byte* const first = arena.takeRoom(24);
  std::byte* const second = arena.takeRoom(24);
  arena.giveBack(first, 24);
  arena.giveBack(second, 24);
  EXPECT_FALSE((std::set{first, second}.contains(arena.takeRoom(32))));
  EXPECT_EQ((std::set{arena.takeRoom(24), arena.takeRoom(24)}), (std::set{first, second}));
  EXPECT_FALSE((std::set{first, second}.contains(arena.takeRoom(24))));
}

TEST(Arena, RoomGrowsWhereItIsAsLongAsNothingLiesBehindIt) {
  Arena arena;
  std::byte* const room = arena.takeRoom(16);
  EXPECT_TRUE(arena.extendRoom(room, 16, 40));
  std::byte* const next = arena.takeRoom(8);
  EXPECT_GE(next, room + 40);
  EXPECT_FALSE(arena.extendRoom(room, 40, 48));
  EXPECT_TRUE(arena.extendRoom(next, 8, 16));
}

TEST(Arena, RoomDoesNotGrowBeyondWhatIsLeft) {
  Arena arena;
  std::byte* const room = arena.takeRoom(16);
  EXPECT_FALSE(arena.extendRoom(room, 16, std::size_t{1} << 30U));
}

}  // namespace
}  // namespace zelvreg::machine
