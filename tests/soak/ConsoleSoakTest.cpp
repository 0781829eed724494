#include <gtest/gtest.h>

#include <vector>

#include "console/CommandRun.h"
#include "soak/Rounds.h"
#include "soak/SoakComputer.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;
using Arguments = std::vector<std::string>;

class ConsoleSoakTest : public ::testing::Test, protected CommandRun {
 protected:
  int run(const Arguments& arguments) {
    Arguments all = computer->target();
    all.insert(all.end(), arguments.begin(), arguments.end());
    return on(all);
  }
  // What the last command said.
  [[nodiscard]] std::string told() const { return out.str() + error.str(); }

  // The safety exports of all repairs.
  [[nodiscard]] std::vector<fs::path> exports() const {
    std::error_code none;
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(computer->exports(), none)) {
      files.push_back(entry.path());
    }
    return files;
  }

  std::unique_ptr<fixture::SoakComputer> computer = fixture::SoakComputer::make();
};

TEST_F(ConsoleSoakTest, TheProcessHoldsNoMoreAfterManyScansRepairsAndUndos) {
  for (const fs::path& left : exports()) {
    fs::remove(left);
  }
  fixture::goRounds(24, [this] {
    ASSERT_EQ(run({"scan", "--only", "startup"}), problemsFound) << told();
    ASSERT_EQ(run({"fix", "--only", "startup", "--yes", "--all"}), nothingFound) << told();
    const auto files = exports();
    ASSERT_EQ(files.size(), 1U) << told();
    ASSERT_EQ(run({"undo", "restore-export", files.front().string()}), nothingFound) << told();
    fs::remove(files.front());
  });
}

}  // namespace
}  // namespace zelvreg::console
