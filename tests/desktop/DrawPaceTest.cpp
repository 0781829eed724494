#include "desktop/DrawPace.h"

#include <gtest/gtest.h>

namespace zelvreg::desktop {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class DrawPaceTest : public ::testing::Test {
 protected:
  void draw(milliseconds time) {
    pace.noteDrawing(begin, begin + time);
    end = begin + time;
  }

  [[nodiscard]] bool isDueAfter(milliseconds time, bool isScanning) const {
    return pace.isDue(end + time, isScanning);
  }

  DrawPace pace;
  const DrawPace::Clock::time_point begin{seconds(1000)};
  DrawPace::Clock::time_point end = begin;
};

TEST_F(DrawPaceTest, TheFirstIsDueAtOnce) { EXPECT_TRUE(isDueAfter(milliseconds(0), true)); }

TEST_F(DrawPaceTest, QuickDrawingComesSixtyTimesASecond) {
  draw(milliseconds(2));
  EXPECT_FALSE(isDueAfter(milliseconds(15), true));
  EXPECT_TRUE(isDueAfter(milliseconds(16), true));
}

TEST_F(DrawPaceTest, SlowDrawingLeavesMostOfTheTimeToAScan) {
  draw(milliseconds(100));
  EXPECT_FALSE(isDueAfter(milliseconds(299), true));
  EXPECT_TRUE(isDueAfter(milliseconds(300), true));
  EXPECT_TRUE(isDueAfter(milliseconds(16), false));
}

TEST_F(DrawPaceTest, AUserWhoWasWaitedForDoesNotHoldTheNextBack) {
  draw(seconds(60));
  EXPECT_TRUE(isDueAfter(milliseconds(600), true));
}

TEST_F(DrawPaceTest, AfterAWaitItIsDueAtOnce) {
  draw(milliseconds(100));
  pace.start();
  EXPECT_TRUE(isDueAfter(milliseconds(0), true));
}

}  // namespace
}  // namespace zelvreg::desktop
