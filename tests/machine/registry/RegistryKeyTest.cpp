#include "machine/registry/RegistryKey.h"

#include <gtest/gtest.h>

namespace zelvreg::machine {
namespace {

TEST(RegistryKey, ItsDepthCountsTheKeysAboveIt) {
  RegistryKey root;
  RegistryKey child;
  child.parent = &root;
  RegistryKey grandchild;
  grandchild.parent = &child;
  EXPECT_EQ(depthOf(root), 0U);
  EXPECT_EQ(depthOf(child), 1U);
  EXPECT_EQ(depthOf(grandchild), 2U);
}

}  // namespace
}  // namespace zelvreg::machine
