// Only native: the bench is built on the system that builds.
#include "ReplayBench.h"

#include <gtest/gtest.h>

#include "machine/TemporaryFolder.h"
#include "machine/hive/HiveFile.h"

namespace zelvreg::bench {
namespace {

TEST(ReplayBench, TakesOverTheLogsOfAHiveOfTheSizeThatItsGoalSpeaksOf) {
  const fixture::TemporaryFolder folder;
  makeDirtyDisk(folder.path());
  const auto file = folder.path() / "Windows/System32/config/SOFTWARE";
  constexpr std::uintmax_t megabyte = 1024 * 1024;
  EXPECT_GE(std::filesystem::file_size(file), 12 * megabyte);
  EXPECT_LT(std::filesystem::file_size(file), 13 * megabyte);
  const machine::HiveFile hive(file);
  EXPECT_EQ(hive.replay().entries, 24U);
  EXPECT_GT(hive.replay().pages, 600U);
  EXPECT_GE(measureReplay(folder.path(), 1), 0);
}

}  // namespace
}  // namespace zelvreg::bench
