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

// Each character is as wide as the others.
int width(std::u16string_view text) { return static_cast<int>(text.size()); }

TEST_F(ListTextTest, APathThatHasRoomStaysWhole) {
  EXPECT_EQ(withoutMiddle(u"", 0, width), u"");
  EXPECT_EQ(withoutMiddle(u"CLSID\\a", 7, width), u"CLSID\\a");
}

TEST_F(ListTextTest, StartAndEndOfALongPathCanBeRead) {
  const std::u16string path = u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Quill";
  EXPECT_EQ(withoutMiddle(path, 30, width), u"SOFTWARE\\Microsoft\\Wi...\\Quill");
  EXPECT_EQ(withoutMiddle(path, 12, width), u"SOF...\\Quill");
}

TEST_F(ListTextTest, ALongLastNameLeavesTheStartAThird) {
  const std::u16string path = u"CLSID\\{01234567-89AB-CDEF-0123-456789ABCDEF}";
  EXPECT_EQ(withoutMiddle(path, 33, width), u"CLSID\\{012...F-0123-456789ABCDEF}");
}

TEST_F(ListTextTest, ATextWithoutABackslashLosesItsEnd) {
  EXPECT_EQ(withoutMiddle(u"abcdefghijklmnopqrstuvwxyz", 12, width), u"abcdefghi...");
}

TEST_F(ListTextTest, NoCharacterIsCutAndNoRoomIsNoFault) {
  const std::u16string path = u"\U0001F600\U0001F601\U0001F602\\\U0001F603\U0001F604\U0001F605";
  for (int room = 0; room < width(path); ++room) {
    const std::u16string cut = withoutMiddle(path, room, width);
    EXPECT_LE(width(cut), std::max(3, room));
    for (std::size_t at = 0; at < cut.size(); ++at) {
      const bool isFirst = cut[at] >= 0xD800 && cut[at] < 0xDC00;
      const bool isSecondNext =
          at + 1 < cut.size() && cut[at + 1] >= 0xDC00 && cut[at + 1] < 0xE000;
      EXPECT_EQ(isFirst, isSecondNext) << room << " " << at;
    }
  }
}

}  // namespace
}  // namespace zelvreg::desktop
