#include "roots/ValueTypes.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace zelvreg {
namespace {

TEST(ValueTypes, AreTheNumbersOfTheSystem) {
  EXPECT_EQ(valueTypes::text, REG_SZ);
  EXPECT_EQ(valueTypes::expandableText, REG_EXPAND_SZ);
  EXPECT_EQ(valueTypes::binary, REG_BINARY);
  EXPECT_EQ(valueTypes::number, REG_DWORD);
  EXPECT_EQ(valueTypes::texts, REG_MULTI_SZ);
}

TEST(ValueTypes, DataOfTwoTypesAreASingleText) {
  for (const std::uint32_t type : {REG_SZ, REG_EXPAND_SZ}) {
    EXPECT_TRUE(isSingleText(type)) << type;
  }
  EXPECT_FALSE(isSingleText(REG_MULTI_SZ));
}

TEST(ValueTypes, DataOfThreeTypesAreText) {
  for (const std::uint32_t type : {REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ}) {
    EXPECT_TRUE(isText(type)) << type;
  }
  for (const std::uint32_t type : {REG_NONE, REG_BINARY, REG_DWORD, REG_LINK, REG_QWORD}) {
    EXPECT_FALSE(isText(type)) << type;
  }
}

}  // namespace
}  // namespace zelvreg
