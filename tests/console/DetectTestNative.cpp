// Detection and repair of the demo machine; the Windows program takes no such folder.
#include <gtest/gtest.h>

#include "console/CommandRun.h"
#include "console/DetectCommand.h"
#include "machine/TemporaryFolder.h"
#include "support/SourceFolder.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

class DetectFolderTest : public ::testing::Test, protected CommandRun {
 protected:
  DetectFolderTest() {
    fs::copy(sourceFolder() + "/demo/machine", copy.path(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
  }

  // The exit status, as the program's own.
  int detected(std::vector<std::string> arguments = {}) {
    arguments.insert(arguments.begin(), {"zelvreg", "--machine", copy.path().string(), "detect"});
    std::vector<const char*> texts;
    for (const std::string& argument : arguments) {
      texts.push_back(argument.c_str());
    }
    const Options options = parseCommandLine(static_cast<int>(texts.size()), texts.data()).options;
    line.str("");
    return detect(options,
                  [&options] { return Computer::open(options.target, accessFor(options.command)); },
                  {.out = line, .error = line});
  }

  const fixture::TemporaryFolder copy;
  std::ostringstream line;
};

TEST_F(DetectFolderTest, ItSettlesOnceTheSureFindingsAreRepaired) {
  EXPECT_EQ(detected(), problemsFound) << line.str();
  EXPECT_NE(line.str().find("fonts "), std::string::npos) << line.str();
  EXPECT_EQ(onMachine(copy.path().string(), {"fix", "--yes", "--min-confidence", "sure"}),
            nothingFound)
      << error.str();
  EXPECT_EQ(detected(), nothingFound) << line.str();
  EXPECT_NE(line.str().find(": nothing sure to repair; "), std::string::npos) << line.str();
}

TEST_F(DetectFolderTest, ItSettlesForEveryUserToo) {
  EXPECT_EQ(detected({"--user", "all"}), problemsFound) << line.str();
  EXPECT_EQ(onMachine(copy.path().string(),
                      {"fix", "--yes", "--min-confidence", "sure", "--user", "all"}),
            nothingFound)
      << error.str();
  EXPECT_EQ(detected({"--user", "all"}), nothingFound) << line.str();
}

TEST_F(DetectFolderTest, OnlyTheNamedCategoriesCount) {
  EXPECT_EQ(detected({"--only", "fonts"}), problemsFound) << line.str();
  EXPECT_NE(line.str().find(" in 1 category (fonts "), std::string::npos) << line.str();
}

TEST_F(DetectFolderTest, AComputerThatCannotBeOpenedIsNoReasonForARepair) {
  fs::remove_all(copy.path());
  EXPECT_EQ(detected(), nothingFound);
  EXPECT_NE(line.str().find("not known whether there is anything to repair: "), std::string::npos);
}

}  // namespace
}  // namespace zelvreg::console
