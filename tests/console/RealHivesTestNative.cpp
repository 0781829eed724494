// Disks of real computers, where a folder with them is at hand; the Windows program takes no disk.
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "console/Commands.h"

namespace zelvreg::console {
namespace {

class RealHives : public ::testing::Test {
 protected:
  // A scan of one of the disks, with the number of its findings on the output's last line.
  std::string scan(const std::string& disk, const std::vector<const char*>& more = {}) {
    const std::string root = std::string(std::getenv("ZELVREG_REAL_HIVES")) + "/" + disk;
    std::vector<const char*> arguments{"zelvreg", "--offline", root.c_str()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    arguments.insert(arguments.end(), {"scan", "--only", "fonts,dlls"});
    const auto parsed = parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
    const auto computer = Computer::open(parsed.options.target);
    std::ostringstream out;
    std::ostringstream error;
    runCommand(parsed.options, *computer, {.out = out, .error = error});
    EXPECT_EQ(error.str(), "");
    const std::string text = out.str();
    return text.substr(text.rfind('\n', text.size() - 2) + 1);
  }

  void SetUp() override {
    if (std::getenv("ZELVREG_REAL_HIVES") == nullptr) {
      GTEST_SKIP() << "ZELVREG_REAL_HIVES names no folder";
    }
  }
};

TEST_F(RealHives, EveryFontOfADiskWithoutItsFilesIsGone) {
  EXPECT_EQ(scan("nt4"), "24 problems found.\n");
}

TEST_F(RealHives, ADiskWithoutTheProgramsHiveHasNothingToFindInItsFirstRows) {
  EXPECT_EQ(scan("windows7"), "0 problems found.\n");
  EXPECT_EQ(scan("dirty"), "0 problems found.\n");
}

TEST_F(RealHives, EachUserOfADiskCanBeTheCurrentOne) {
  EXPECT_EQ(scan("windows7", {"--user", "first"}), "0 problems found.\n");
  EXPECT_EQ(scan("windows7", {"--user", "second"}), "0 problems found.\n");
  EXPECT_THROW(scan("windows7", {"--user", "third"}), std::runtime_error);
}

}  // namespace
}  // namespace zelvreg::console
