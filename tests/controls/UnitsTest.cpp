#include "controls/Units.h"

#include <gtest/gtest.h>

#include <string>

namespace zelvreg::controls {
namespace {

TEST(FirstUnits, AreAsManyAsFit) {
  EXPECT_EQ(firstUnits(u"abc", 5), u"abc");
  EXPECT_EQ(firstUnits(u"abc", 3), u"abc");
  EXPECT_EQ(firstUnits(u"abc", 2), u"ab");
  EXPECT_EQ(firstUnits(u"abc", 0), u"");
  EXPECT_EQ(firstUnits(u"", 0), u"");
}

TEST(FirstUnits, KeepThePairsOfSurrogatesTogether) {
  const std::u16string text = u"a\U0001F600b";
  EXPECT_EQ(firstUnits(text, 2), u"a");
  EXPECT_EQ(firstUnits(text, 3), u"a\U0001F600");
  EXPECT_EQ(firstUnits(text.substr(1), 1), u"");
}

TEST(FirstUnits, CutNextToALoneSurrogate) {
  const std::u16string lone{u'a', char16_t{0xD800}, u'b', char16_t{0xDC00}, u'c'};
  for (const std::size_t units : {1U, 2U, 3U, 4U}) {
    EXPECT_EQ(firstUnits(lone, units), lone.substr(0, units)) << units;
  }
}

TEST(CopyUnits, LeaveRoomForTheNul) {
  char16_t field[4] = {};
  copyUnits(u"ab\U0001F600", field);
  EXPECT_EQ(std::u16string(field), u"ab") << "half a pair has no room";
  char16_t larger[5] = {};
  copyUnits(u"abcde", larger);
  EXPECT_EQ(std::u16string(larger), u"abcd");
}

}  // namespace
}  // namespace zelvreg::controls
