// Each input that is kept: those from which fuzzing begins, and those that once broke something.
// The targets open computers in folders, which only the emulated computer can do.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "fuzz/FuzzTarget.h"
#include "support/SourceFolder.h"

namespace zelvreg::fuzz {
namespace {

namespace fs = std::filesystem;

// Gives a target each file of its own in a folder with a folder for each target. Returns how many.
std::size_t giveAll(const fs::path& folder, const FuzzTarget& target) {
  std::size_t count = 0;
  for (const auto& entry : fs::directory_iterator(folder / target.name)) {
    std::ostringstream content;
    content << std::ifstream(entry.path(), std::ios::binary).rdbuf();
    EXPECT_NO_THROW(target.run(content.str())) << entry.path();
    ++count;
  }
  return count;
}

class FuzzInputs : public ::testing::TestWithParam<FuzzTarget> {};

TEST_P(FuzzInputs, KeepToTheRules) {
  EXPECT_GT(giveAll(fs::path(sourceFolder()) / "tests/fuzz/inputs", GetParam()), 0U);
}

TEST_P(FuzzInputs, OfNothingKeepToTheRulesToo) { EXPECT_NO_THROW(GetParam().run("")); }

TEST(FoundFuzzInputs, KeepToTheRules) {
  const char* folder = std::getenv("ZELVREG_FUZZ_INPUTS");
  if (folder == nullptr) {
    GTEST_SKIP() << "ZELVREG_FUZZ_INPUTS names no folder";
  }
  for (const FuzzTarget& target : fuzzTargets()) {
    EXPECT_GT(giveAll(folder, target), 0U) << target.name;
  }
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzInputs,
                         ::testing::ValuesIn(fuzzTargets().begin(), fuzzTargets().end()),
                         [](const auto& target) {
                           std::string name = target.param.name;
                           std::erase(name, '-');
                           return name;
                         });

}  // namespace
}  // namespace zelvreg::fuzz
