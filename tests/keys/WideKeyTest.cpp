#include "keys/WideKey.h"

#include <gtest/gtest.h>

namespace zelvreg {
namespace {

TEST(WideKey, NamesThatDifferInCaseAtMostAreTheSame) {
  EXPECT_TRUE(isSameName(u"", u""));
  EXPECT_TRUE(isSameName(u"Wow6432Node", u"WOW6432node"));
  EXPECT_TRUE(isSameName(u"\x0416\xD800", u"\x0436\xD800"));
  EXPECT_FALSE(isSameName(u"name", u"names"));
  EXPECT_FALSE(isSameName(u"name", u""));
  EXPECT_FALSE(isSameName(u"\xD800", u"\xDC00"));
}

}  // namespace
}  // namespace zelvreg
