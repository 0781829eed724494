// Only here are files mapped, and sizes limited, so that the system ends a process with a signal.
// Each test has a process of its own.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>

#include <cstdlib>
#include <iostream>

#include "console/Computer.h"
#include "console/ProcessStart.h"
#include "machine/OfflineDiskFixture.h"

namespace zelvreg::console {
namespace {

constexpr int statusOfRefusal = 3;

class LostPagesDeathTest : public fixture::OfflineDiskTest {
 protected:
  void SetUp() override {
    fixture::HiveBuilder builder = hive(software);
    for (char letter = 'a'; letter <= 'z'; ++letter) {
      builder.value(R"(Vendor\)" + std::string(1, letter), "x", 3, std::string(4096, letter));
    }
  }

  void readWhatIsCutShort() {
    beginProcess();
    open();
    std::filesystem::resize_file(disk.path() / software, 4096);
    static_cast<void>(registry().count());
    std::_Exit(0);
  }

  void saveWhereNoFileMayGrow() {
    beginProcess();
    open();
    registry().erase(key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor\a)"));
    const rlimit limit{4096, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &limit);
    const std::string line = refusal();
    std::cerr << line << "\n";
    std::_Exit(line.empty() ? 0 : statusOfRefusal);
  }
};

TEST_F(LostPagesDeathTest, AHiveThatIsCutShortEndsInOneLineAndWithTwo) {
  EXPECT_EXIT(readWhatIsCutShort(), ::testing::ExitedWithCode(2),
              "^zelvreg: a file was cut short while it was read.*\n$");
}

TEST_F(LostPagesDeathTest, AFileThatMayNotGrowEndsInOneLineAndNothingIsLost) {
  const auto files = allFiles();
  EXPECT_EXIT(saveWhereNoFileMayGrow(), ::testing::ExitedWithCode(statusOfRefusal),
              "SOFTWARE cannot be written");
  EXPECT_TRUE(allFiles() == files);
}

}  // namespace
}  // namespace zelvreg::console
