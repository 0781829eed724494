#include "machine/registry/RegistryKey.h"

#include <gtest/gtest.h>

namespace zelvreg::machine {
namespace {

TEST(RegistryKey, itsDepthCountsTheKeysAboveIt) {
  RegistryKey root;
  RegistryKey child;
  child.parent = &root;
  RegistryKey grandchild;
  grandchild.parent = &child;
  EXPECT_EQ(depthOf(root), 0U);
  EXPECT_EQ(depthOf(child), 1U);
  EXPECT_EQ(depthOf(grandchild), 2U);
}

TEST(RegistryKey, dataOfThreeTypesAreText) {
  for (const DWORD type : {REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ}) {
    EXPECT_TRUE(isText(type)) << type;
  }
  for (const DWORD type : {REG_NONE, REG_BINARY, REG_DWORD, REG_LINK, REG_QWORD}) {
    EXPECT_FALSE(isText(type)) << type;
  }
}

}  // namespace
}  // namespace zelvreg::machine
