#include "text/Text.h"

#include <gtest/gtest.h>

namespace zelvreg {
namespace {

using Parts = std::vector<std::string_view>;

TEST(Text, TrimsBlanksAtBothEndsAndNothingElse) {
  EXPECT_EQ(trim("  a b  "), "a b");
  EXPECT_EQ(trim("\ta\t"), "\ta\t");
  EXPECT_EQ(trim("   "), "");
  EXPECT_EQ(trim(std::string_view("a \0", 3)), std::string_view("a \0", 3));
}

TEST(Text, ChangesTheCaseOfAsciiLettersOnly) {
  EXPECT_EQ(lowerCase("AZ[@az09"), "az[@az09");
  EXPECT_EQ(upperCase("az{`AZ09"), "AZ{`AZ09");
}

TEST(Text, SplitsAnEmptyTextIntoNoParts) { EXPECT_TRUE(split("", ".").empty()); }

TEST(Text, SplitsIntoOnePartMoreThanThereAreSeparators) {
  EXPECT_EQ(split("a", "."), (Parts{"a"}));
  EXPECT_EQ(split(".a..", "."), (Parts{"", "a", "", ""}));
  EXPECT_EQ(split("a::b", "::"), (Parts{"a", "b"}));
}

TEST(Text, ReplacesFromLeftToRightWithoutLookingAtWhatItPutIn) {
  EXPECT_EQ(replaceAll("aaa", "aa", "a"), "aa");
  EXPECT_EQ(replaceAll("a.b.c", ".", ""), "abc");
}

TEST(Text, FindsPartsWithAndWithoutRegardToCase) {
  EXPECT_TRUE(contains("C:\\Temp", ":\\"));
  EXPECT_FALSE(contains("System32", "system32"));
  EXPECT_TRUE(containsIgnoringCase("C:\\Windows\\SYSTEM32\\a", "system32"));
  EXPECT_FALSE(containsIgnoringCase("C:\\Windows\\SysWOW64", "system32"));
  EXPECT_TRUE(containsIgnoringCase("sSSsYs/SSystem32", "system32"));
  EXPECT_TRUE(containsIgnoringCase("Ssystem32", "system32"));
  EXPECT_FALSE(containsIgnoringCase("sSystem3", "system32"));
  EXPECT_TRUE(containsIgnoringCase("..:\\X", ":\\x"));
  EXPECT_TRUE(containsIgnoringCase("xAZ", "az"));
  EXPECT_EQ(findIgnoringCase("xAbab", "ab"), 1U);
  EXPECT_EQ(findIgnoringCase("xabAB", "ab"), 1U);
  EXPECT_EQ(findIgnoringCase("x", ""), 0U);
  EXPECT_FALSE(containsIgnoringCase("x@", "x`"));
  EXPECT_FALSE(containsIgnoringCase("x[", "x{"));
  EXPECT_FALSE(containsIgnoringCase("\x5B", "{"));  // no letters: 0x20 apart is not the same
}

TEST(Text, EndsAtTheFirstNul) {
  EXPECT_EQ(untilNul(std::string_view("ab\0cd", 5)), "ab");
  EXPECT_EQ(untilNul("ab"), "ab");
}

}  // namespace
}  // namespace zelvreg
