#include "desktop/ListText.h"

#include <algorithm>

#include "support/ComputerFixture.h"

namespace zelvreg::desktop {
namespace {

using ListTextTest = fixture::ComputerFixture;

TEST_F(ListTextTest, TheLongestRowsComeFirst) {
  for (const char* text : {"aa", "aaaa", "a", "aaaaa", "aaa"}) {
    form.View3.add(text);
  }
  EXPECT_EQ(longestRows(form.View3, 0, 2), (std::vector<std::size_t>{4, 2}));
  EXPECT_EQ(longestRows(form.View3, 0, 9).size(), 5U);
  form.View3.clear();
  EXPECT_TRUE(longestRows(form.View3, 0, 9).empty());
}

TEST_F(ListTextTest, OfManyRowsOnlySoManyAreLookedAt) {
  for (int row = 1; row <= 100'000; ++row) {
    form.View3.add("row");
  }
  form.View3.add("a longer row behind them");
  EXPECT_LE(longestRows(form.View3, 0, 1).front(), 100'000U);
}

TEST_F(ListTextTest, AShortTextIsOneLine) {
  EXPECT_EQ(inLines(u"", 10), u"");
  EXPECT_EQ(inLines(u"C:\\Windows", 10), u"C:\\Windows");
}

TEST_F(ListTextTest, ALongPathIsCutBehindABackslashAndLosesNothing) {
  EXPECT_EQ(inLines(u"C:\\Windows\\system32\\user.dll", 12),
            u"C:\\Windows\\\nsystem32\\\nuser.dll");
  EXPECT_EQ(inLines(u"one two three", 8), u"one two \nthree");
}

TEST_F(ListTextTest, ATextWithoutABreakIsCutAnywhereButInACharacter) {
  EXPECT_EQ(inLines(u"abcdefg", 3), u"abc\ndef\ng");
  EXPECT_EQ(inLines(u"ab\U0001F600c", 3), u"ab\n\U0001F600c");
  // There is no smaller line.
  std::u16string cut = inLines(u"\U0001F600", 1);
  std::erase(cut, u'\n');
  EXPECT_EQ(cut, u"\U0001F600");
}

}  // namespace
}  // namespace zelvreg::desktop
