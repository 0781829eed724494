#include "unicode/ReadingOrder.h"

#include <gtest/gtest.h>

namespace zelvreg {
namespace {

TEST(ReadingOrderTest, HebrewAndArabicAreReadFromTheRight) {
  EXPECT_TRUE(readsFromRight(u"\u05D0"));
  EXPECT_TRUE(readsFromRight(u"Windows \u0627"));
  EXPECT_TRUE(readsFromRight(u"\uFEFB"));
  EXPECT_FALSE(readsFromRight(u"C:\\Windows"));
  EXPECT_FALSE(readsFromRight(u"\u0417 \u8868 \u30BD"));
  EXPECT_FALSE(readsFromRight(u""));
}

TEST(ReadingOrderTest, APathKeepsItsOrderBetweenMarks) {
  EXPECT_EQ(keptLeftToRight("HKEY_CURRENT_USER\\a"),
            "\xE2\x80\xAAHKEY_CURRENT_USER\\a\xE2\x80\xAC");
  EXPECT_EQ(keptLeftToRight("42"), "42");
}

}  // namespace
}  // namespace zelvreg
