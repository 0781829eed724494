#include "machine/hive/NameHash.h"

#include <gtest/gtest.h>

namespace zelvreg::machine {
namespace {

TEST(NameHashTest, AHintIsTheFirstFourLettersInAnyCase) {
  const std::uint32_t hint = hintOfName(u"Software");
  EXPECT_EQ(hint, 0x74666F53U);
  EXPECT_TRUE(mayBeHintOf(hint, u"Software"));
  EXPECT_TRUE(mayBeHintOf(hint, u"SOFTens"));
  EXPECT_FALSE(mayBeHintOf(hint, u"Sofware"));
  EXPECT_FALSE(mayBeHintOf(hint, u"System"));
  EXPECT_FALSE(mayBeHintOf(hint, u"Loftware"));
  EXPECT_TRUE(mayBeHintOf(hintOfName(u"Run"), u"run"));
  EXPECT_FALSE(mayBeHintOf(hintOfName(u"Run"), u"runs"));
}

TEST(NameHashTest, ANameWithALetterOfAnotherScriptHasNoHintAndNoHintFitsAnyName) {
  EXPECT_EQ(hintOfName(u"\u043F\u043E"), 0U);
  EXPECT_TRUE(mayBeHintOf(0, u"Software"));
}

TEST(NameHashTest, AHashIsTheSameInAnyCase) {
  EXPECT_EQ(hashOfName(u"run"), hashOfName(u"RUN"));
  EXPECT_NE(hashOfName(u"run"), hashOfName(u"nur"));
}

}  // namespace
}  // namespace zelvreg::machine
