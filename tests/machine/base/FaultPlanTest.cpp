#include "machine/base/FaultPlan.h"

#include <gtest/gtest.h>

namespace zelvreg::machine {
namespace {

TEST(FaultPlan, FailsTheCallOfThatNumberAndNoOther) {
  FaultPlan plan;
  plan.fail(ApiCall::ReadFile, 2, ERROR_ACCESS_DENIED);
  EXPECT_FALSE(plan.next(ApiCall::ReadFile));
  EXPECT_FALSE(plan.next(ApiCall::WriteFile));
  EXPECT_EQ(plan.next(ApiCall::ReadFile), ERROR_ACCESS_DENIED);
  EXPECT_FALSE(plan.next(ApiCall::ReadFile));
}

TEST(FaultPlan, CountsFromTheMomentOfPlanning) {
  FaultPlan plan;
  EXPECT_FALSE(plan.next(ApiCall::MoveFile));
  plan.fail(ApiCall::MoveFile, 1, ERROR_DISK_FULL);
  EXPECT_EQ(plan.next(ApiCall::MoveFile), ERROR_DISK_FULL);
}

TEST(FaultPlan, KeepsSeveralFaultsOfOneKind) {
  FaultPlan plan;
  plan.fail(ApiCall::DeleteFile, 1, ERROR_ACCESS_DENIED);
  plan.fail(ApiCall::DeleteFile, 3, ERROR_DISK_FULL);
  EXPECT_EQ(plan.next(ApiCall::DeleteFile), ERROR_ACCESS_DENIED);
  EXPECT_FALSE(plan.next(ApiCall::DeleteFile));
  EXPECT_EQ(plan.next(ApiCall::DeleteFile), ERROR_DISK_FULL);
}

TEST(FaultPlan, FailsEveryCallFromOneOnUntilItIsForgotten) {
  FaultPlan plan;
  EXPECT_FALSE(plan.next(ApiCall::RegOpenKey));
  plan.failFrom(ApiCall::RegOpenKey, 2, ERROR_ACCESS_DENIED);
  EXPECT_FALSE(plan.next(ApiCall::RegOpenKey));
  EXPECT_FALSE(plan.next(ApiCall::RegCreateKey));
  for (int call = 0; call < 3; ++call) {
    EXPECT_EQ(plan.next(ApiCall::RegOpenKey), ERROR_ACCESS_DENIED);
  }
  EXPECT_EQ(plan.calls(ApiCall::RegOpenKey), 5U);
  plan.clear();
  EXPECT_FALSE(plan.next(ApiCall::RegOpenKey));
}

TEST(FaultPlan, ForgetsPlansAndCounts) {
  FaultPlan plan;
  plan.fail(ApiCall::CreateFile, 2, ERROR_ACCESS_DENIED);
  EXPECT_FALSE(plan.next(ApiCall::CreateFile));
  EXPECT_EQ(plan.calls(ApiCall::CreateFile), 1U);
  plan.clear();
  EXPECT_EQ(plan.calls(ApiCall::CreateFile), 0U);
  EXPECT_FALSE(plan.next(ApiCall::CreateFile));
  EXPECT_FALSE(plan.next(ApiCall::CreateFile));
}

}  // namespace
}  // namespace zelvreg::machine
