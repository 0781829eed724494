// Only on Windows do programs share one registry.
#include "runtime/SingleInstance.h"

#include <gtest/gtest.h>

#include <optional>

namespace zelvreg {
namespace {

TEST(SingleInstance, TheFirstKeepsOthersOutUntilItIsGone) {
  std::optional<SingleInstance> first(std::in_place);
  EXPECT_TRUE(first->isFirst());
  {
    const SingleInstance second;
    EXPECT_FALSE(second.isFirst());
    EXPECT_TRUE(first->isFirst());
  }
  EXPECT_FALSE(SingleInstance().isFirst());
  first.reset();
  EXPECT_TRUE(SingleInstance().isFirst());
  EXPECT_TRUE(SingleInstance().isFirst());
}

TEST(SingleInstance, ItsNameIsSeenInAllSessions) {
  const SingleInstance first;
  HANDLE opened = OpenMutexW(SYNCHRONIZE, FALSE, L"Global\\ZelvaneFixRegistryProblems");
  EXPECT_NE(opened, nullptr);
  CloseHandle(opened);
}

TEST(SingleInstance, ANameThatMeansSomethingElseCountsAsTaken) {
  HANDLE event = CreateEventW(nullptr, FALSE, FALSE, L"Global\\ZelvaneFixRegistryProblems");
  EXPECT_FALSE(SingleInstance().isFirst());
  CloseHandle(event);
}

}  // namespace
}  // namespace zelvreg
