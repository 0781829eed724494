#include "machine/computer/Clock.h"

#include <gtest/gtest.h>

namespace zelvreg::machine {
namespace {

SYSTEMTIME timeOf(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second) {
  return {year, month, 0, day, hour, minute, second, 0};
}

TEST(Clock, StandsStillAtTheTimeItWasSetTo) {
  Clock clock(timeOf(2026, 1, 31, 13, 45, 6));
  const SYSTEMTIME time = clock.localTime();
  EXPECT_EQ(time.wYear, 2026);
  EXPECT_EQ(time.wMonth, 1);
  EXPECT_EQ(time.wDay, 31);
  EXPECT_EQ(time.wDayOfWeek, 6);
  EXPECT_EQ(time.wHour, 13);
  EXPECT_EQ(time.wMinute, 45);
  EXPECT_EQ(time.wSecond, 6);
  EXPECT_EQ(clock.tickCount(), 0U);
}

TEST(Clock, MovesOverTheEndOfAMonth) {
  Clock clock(timeOf(2024, 2, 29, 23, 59, 59));
  clock.advance(1500);
  EXPECT_EQ(clock.localTime().wMonth, 3);
  EXPECT_EQ(clock.localTime().wDay, 1);
  EXPECT_EQ(clock.localTime().wSecond, 0);
  EXPECT_EQ(clock.localTime().wMilliseconds, 500);
  EXPECT_EQ(clock.tickCount(), 1500U);
}

TEST(Clock, MovesAfterEachLookIfItIsToldTo) {
  Clock clock(timeOf(2026, 1, 31, 13, 45, 6));
  clock.advanceAtEachLook(1000);
  EXPECT_EQ(clock.localTime().wSecond, 6);
  EXPECT_EQ(clock.localTime().wSecond, 7);
  EXPECT_EQ(clock.tickCount(), 2000U);
}

TEST(Clock, WithoutATimeIsThisComputersOwn) {
  Clock clock(std::nullopt);
  EXPECT_GE(clock.localTime().wYear, 2024);
  const ULONGLONG before = clock.tickCount();
  clock.advance(60000);
  EXPECT_GE(clock.tickCount(), before + 60000);
}

TEST(Clock, KnowsWhichTimesExist) {
  EXPECT_TRUE(isRealTime(timeOf(2024, 2, 29, 0, 0, 0)));
  EXPECT_FALSE(isRealTime(timeOf(2023, 2, 29, 0, 0, 0)));
  EXPECT_FALSE(isRealTime(timeOf(2023, 2, 28, 24, 0, 0)));
}

}  // namespace
}  // namespace zelvreg::machine
