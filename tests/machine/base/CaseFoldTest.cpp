#include "machine/base/CaseFold.h"

#include <gtest/gtest.h>

namespace zelvreg::machine {
namespace {

TEST(CaseFold, OneNameInTwoCasesIsTheSame) {
  EXPECT_TRUE(isSameName(u"", u""));
  EXPECT_TRUE(isSameName(u"Wow6432Node", u"WOW6432node"));
  EXPECT_TRUE(isSameName(u"\u00C4\u0416", u"\u00E4\u0436"));
}

TEST(CaseFold, ANameIsNotTheSameAsItsBeginning) {
  EXPECT_FALSE(isSameName(u"Class", u"Classes"));
  EXPECT_FALSE(isSameName(u"Classes", u"Class"));
  EXPECT_FALSE(isSameName(u"a", u""));
}

TEST(CaseFold, TwoTextsHaveInCommonWhatComesBeforeTheirFirstDifference) {
  for (std::size_t length = 0; length < 20; ++length) {
    const std::u16string text(length, u'a');
    EXPECT_EQ(commonLength(text, text), length);
    EXPECT_EQ(commonLength(text, text + u"b"), length);
    for (std::size_t place = 0; place < length; ++place) {
      std::u16string other = text;
      other[place] = u'A';
      EXPECT_EQ(commonLength(text, other), place);
      EXPECT_TRUE(isSameName(text, other));
      other[place] = u'B';
      EXPECT_LT(compareNames(text, other), 0);
      EXPECT_GT(compareNames(other, text), 0);
    }
  }
}

TEST(CaseFold, LettersWhoseCaseWindowsLeavesAloneDiffer) {
  EXPECT_FALSE(isSameName(u"\u00B5", u"\u03BC"));
  EXPECT_FALSE(isSameName(u"\u0131", u"I"));
}

}  // namespace
}  // namespace zelvreg::machine
