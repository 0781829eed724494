#include "desktop/ScrollThumb.h"

#include <gtest/gtest.h>

#include <limits>

namespace zelvreg::desktop {
namespace {

constexpr int track = 200;
constexpr int least = 24;

TEST(ScrollThumb, IsAsLongAsTheShareThatIsSeen) {
  EXPECT_EQ(thumbOf({0, 99, 50, 0}, track, least), (ThumbPlace{0, 100}));
  EXPECT_EQ(thumbOf({0, 99, 50, 25}, track, least), (ThumbPlace{50, 100}));
  EXPECT_EQ(thumbOf({0, 99, 50, 50}, track, least), (ThumbPlace{100, 100}));
}

TEST(ScrollThumb, OfALongListCanStillBeSeizedAndReachesTheEnd) {
  EXPECT_EQ(thumbOf({0, 99999, 11, 0}, track, least), (ThumbPlace{0, least}));
  EXPECT_EQ(thumbOf({0, 99999, 11, 99989}, track, least), (ThumbPlace{track - least, least}));
}

TEST(ScrollThumb, FillsTheTrackWhereAllIsSeen) {
  EXPECT_EQ(thumbOf({0, 9, 10, 0}, track, least), (ThumbPlace{0, track}));
  EXPECT_EQ(thumbOf({0, -1, 10, 0}, track, least), (ThumbPlace{0, track}));
  EXPECT_EQ(positionOfThumb({0, 9, 10, 0}, track, least, 50), 0);
}

TEST(ScrollThumb, IsNotLongerThanItsTrack) {
  EXPECT_EQ(thumbOf({0, 999, 10, 500}, 10, least), (ThumbPlace{0, 10}));
  EXPECT_EQ(positionOfThumb({3, 999, 10, 500}, 10, least, 5), 3);
  EXPECT_EQ(thumbOf({0, 999, 10, 500}, 0, least), (ThumbPlace{0, 0}));
}

TEST(ScrollThumb, WhereItIsDroppedIsThePositionThatItShows) {
  for (const ScrollRange& range :
       {ScrollRange{0, 99, 50, 0}, ScrollRange{5, 104, 10, 5}, ScrollRange{0, 1, 1, 0}}) {
    for (int position = range.first; position <= range.last - range.page + 1; ++position) {
      ScrollRange moved = range;
      moved.position = position;
      const int start = thumbOf(moved, track, least).start;
      EXPECT_EQ(positionOfThumb(range, track, least, start), position);
    }
  }
}

TEST(ScrollThumb, BeyondTheTrackIsAtItsEnd) {
  const ScrollRange range{0, 99, 50, 0};
  EXPECT_EQ(positionOfThumb(range, track, least, -40), 0);
  EXPECT_EQ(positionOfThumb(range, track, least, 5000), 50);
}

TEST(ScrollThumb, CountsBeyondTheNumbersOfThePixels) {
  constexpr int most = std::numeric_limits<int>::max();
  const ScrollRange range{0, most, 11, most};
  EXPECT_EQ(thumbOf(range, track, least), (ThumbPlace{track - least, least}));
  EXPECT_EQ(positionOfThumb(range, track, least, track), most - 10);
}

}  // namespace
}  // namespace zelvreg::desktop
