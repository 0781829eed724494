#include "machine/base/Trimming.h"

#include <gtest/gtest.h>

#include <string>

namespace zelvreg::machine {
namespace {

constexpr std::string_view blanks = " \t";

TEST(Trimming, TakesTheGivenBlanksFromBothEndsAndNoneFromTheMiddle) {
  EXPECT_EQ(trimmed(" \t a \tb\t ", blanks), "a \tb");
  EXPECT_EQ(trimmed("a", blanks), "a");
}

TEST(Trimming, LeavesWhatIsNoBlankOfThisFile) {
  EXPECT_EQ(trimmed(" a\r", blanks), "a\r");
  EXPECT_EQ(trimmed(u" a\r", std::u16string_view(u" \r")), u"a");
}

TEST(Trimming, OfBlanksAloneNothingIsLeft) {
  EXPECT_EQ(trimmed(" \t ", blanks), "");
  EXPECT_EQ(trimmed("", blanks), "");
}

}  // namespace
}  // namespace zelvreg::machine
