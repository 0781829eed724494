#include "shell/TimeLeft.h"

#include <gtest/gtest.h>

#include "form/Form42.h"

namespace zelvreg {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;
using Parts = std::vector<std::optional<TimeLeft::Duration>>;

constexpr seconds start(100);

const Parts usual{seconds(20), seconds(60), seconds(40)};

TEST(TimeLeft, AScanThatIsAsFastAsTheLastOneNeedsItsTime) {
  TimeLeft scan(usual, start);
  EXPECT_EQ(scan.share(start), 0);
  EXPECT_EQ(scan.left(start), seconds(120));
  EXPECT_EQ(scan.left(start + seconds(10)), seconds(110));
  EXPECT_DOUBLE_EQ(*scan.share(start + seconds(10)), 10.0 / 120);
  scan.begin(1, start + seconds(20));
  EXPECT_EQ(scan.left(start + seconds(50)), seconds(70));
  scan.begin(2, start + seconds(80));
  EXPECT_EQ(scan.left(start + seconds(110)), seconds(10));
  EXPECT_DOUBLE_EQ(*scan.share(start + seconds(110)), 110.0 / 120);
}

TEST(TimeLeft, WithoutTheTimeOfEachPartNothingIsTold) {
  TimeLeft scan({seconds(20), std::nullopt, seconds(40)}, start);
  EXPECT_EQ(scan.share(start), std::nullopt);
  EXPECT_EQ(scan.left(start), std::nullopt);
  scan.begin(2, start + seconds(30));
  EXPECT_EQ(scan.left(start + seconds(31)), std::nullopt);
  EXPECT_EQ(TimeLeft().left(start), std::nullopt);
}

TEST(TimeLeft, ASlowerScanTakesLongerInAllThatIsLeft) {
  TimeLeft scan(usual, start);
  // Nearly twice as long as the last time: so are the 100 seconds that were left then.
  scan.begin(1, start + seconds(45));
  EXPECT_EQ(scan.left(start + seconds(45)), seconds(200));
  TimeLeft faster(usual, start);
  faster.begin(1, start + milliseconds(7500));
  EXPECT_EQ(faster.left(start + milliseconds(7500)), seconds(50));
}

TEST(TimeLeft, ANewEstimateIsTakenOverInTheCourseOfSeconds) {
  TimeLeft scan(usual, start);
  const seconds end(45);
  EXPECT_EQ(scan.left(start + end), seconds(100));
  scan.begin(1, start + end);
  const auto soon = scan.left(start + end + seconds(1));
  EXPECT_GT(soon, seconds(100));
  EXPECT_LT(soon, seconds(130));
  std::optional<TimeLeft::Duration> before = soon;
  for (int second = 2; second <= 20; ++second) {
    const auto now = scan.left(start + end + seconds(second));
    EXPECT_LT(*now - *before, seconds(30));
    before = now;
  }
  EXPECT_GT(before, seconds(178));
  EXPECT_LE(before, seconds(182));
}

TEST(TimeLeft, APartThatTakesFarTooLongLeavesNothingToTellUntilItEnds) {
  TimeLeft scan(usual, start);
  EXPECT_NE(scan.left(start + seconds(50)), std::nullopt);
  EXPECT_EQ(scan.left(start + seconds(51)), std::nullopt);
  const double share = *scan.share(start + seconds(49));
  EXPECT_EQ(scan.share(start + seconds(90)), share);
  scan.begin(1, start + seconds(90));
  EXPECT_NE(scan.left(start + seconds(90)), std::nullopt);
}

TEST(TimeLeft, TheShareNeverFalls) {
  TimeLeft scan(usual, start);
  double before = 0;
  for (int second = 0; second < 400; ++second) {
    if (second == 20) {
      scan.begin(1, start + seconds(second));
    } else if (second == 180) {
      scan.begin(2, start + seconds(second));
    }
    const double share = *scan.share(start + seconds(second));
    EXPECT_GE(share, before) << second;
    EXPECT_LE(share, 1) << second;
    before = share;
  }
}

TEST(TimeLeft, APartThatNobodySawHasEnded) {
  TimeLeft scan(usual, start);
  scan.begin(2, start + seconds(80));
  EXPECT_EQ(scan.left(start + seconds(80)), seconds(40));
  scan.begin(3, start + seconds(120));
  EXPECT_EQ(scan.left(start + seconds(120)), std::nullopt);
}

TEST(TimeText, TimesAreRounded) {
  struct Case {
    TimeLeft::Duration left;
    const char* text;
  };
  const Form42 form;
  for (const Case& each :
       {Case{minutes(75), "About 75 minutes left"}, Case{seconds(149), "About 2 minutes left"},
        Case{seconds(91), "About 2 minutes left"}, Case{seconds(89), "About a minute left"},
        Case{seconds(58), "About a minute left"}, Case{seconds(57), "About 55 seconds left"},
        Case{seconds(12), "About 10 seconds left"}, Case{seconds(10), "About 10 seconds left"},
        Case{milliseconds(9999), "Less than 10 seconds left"},
        Case{seconds(0), "Less than 10 seconds left"}}) {
    EXPECT_EQ(TimeText().of(form, each.left), each.text) << each.left.count();
  }
  EXPECT_EQ(TimeText().of(form, std::nullopt), "");
}

TEST(TimeText, ALittleMoreIsNotToldAndMuchMoreIs) {
  const Form42 form;
  TimeText text;
  EXPECT_EQ(text.of(form, seconds(22)), "About 20 seconds left");
  EXPECT_EQ(text.of(form, seconds(24)), "About 20 seconds left");
  EXPECT_EQ(text.of(form, seconds(14)), "About 15 seconds left");
  EXPECT_EQ(text.of(form, seconds(18)), "About 15 seconds left");
  EXPECT_EQ(text.of(form, seconds(33)), "About 35 seconds left");
  EXPECT_EQ(text.of(form, minutes(5)), "About 5 minutes left");
  EXPECT_EQ(text.of(form, minutes(6)), "About 5 minutes left");
  EXPECT_EQ(text.of(form, minutes(7)), "About 7 minutes left");
  // What was told before does not count any more.
  text.of(form, std::nullopt);
  EXPECT_EQ(text.of(form, minutes(8)), "About 8 minutes left");
}

}  // namespace
}  // namespace zelvreg
