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

TEST(CaseFold, LettersWhoseCaseWindowsLeavesAloneDiffer) {
  EXPECT_FALSE(isSameName(u"\u00B5", u"\u03BC"));
  EXPECT_FALSE(isSameName(u"\u0131", u"I"));
}

}  // namespace
}  // namespace zelvreg::machine
