// What the commands note of a demo machine; the Windows program takes no such folder.
#include <gtest/gtest.h>

#include <filesystem>

#include "console/CommandRun.h"
#include "machine/TemporaryFolder.h"
#include "support/SourceFolder.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

class NotedRunTest : public ::testing::Test {
 protected:
  NotedRunTest() {
    fs::copy(sourceFolder() + "/demo/machine", copy.path(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
  }

  // What a command has noted, each step behind a line end.
  std::string noted(std::vector<std::string> arguments) {
    const std::string path = (notes.path() / "run.log").string();
    fs::remove(path);
    arguments.insert(arguments.begin(), {"zelvreg", "--machine", copy.path().string()});
    std::vector<const char*> texts;
    for (const std::string& argument : arguments) {
      texts.push_back(argument.c_str());
    }
    const Options options = parseCommandLine(static_cast<int>(texts.size()), texts.data()).options;
    std::ostringstream out;
    const auto computer = Computer::open(options.target);
    runCommand(options, *computer,
               {.out = out, .error = out, .log = std::make_shared<RunLog>(path)});
    computer->close();
    const std::string text = notes.read("run.log");
    std::string steps = "\n";
    for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) {
      const std::size_t step = text.find("] ", at) + 2;
      steps += text.substr(step, text.find('\n', at) + 1 - step);
    }
    return steps;
  }
  static bool holds(const std::string& steps, const std::string& line) {
    return steps.find("\n" + line) != std::string::npos;
  }

  const fixture::TemporaryFolder copy;
  const fixture::TemporaryFolder notes;
};

TEST_F(NotedRunTest, AScanNotesEachCategory) {
  const std::string steps = noted({"scan", "--only", "fonts,dlls"});
  EXPECT_TRUE(holds(steps, "scanned fonts: 3 found\n")) << steps;
  EXPECT_TRUE(holds(steps, "scanned dlls: 3 found\n")) << steps;
  // Of two rows the rules have lost what they name, and with it their category.
  EXPECT_TRUE(holds(steps, "found 8 in all\n")) << steps;
  EXPECT_FALSE(holds(steps, "scanned icons: ")) << steps;
  EXPECT_TRUE(holds(noted({"scan", "--only", "uninstall"}), "scanned uninstall: 4 found\n"));
}

TEST_F(NotedRunTest, ARepairNotesItsExportAndWhatItHasDoneAndLeft) {
  const std::string steps = noted({"fix", "--all", "--yes"});
  EXPECT_TRUE(holds(steps, "exported: C:\\Program Files (x86)\\zelvreg\\backup\\registry\\"))
      << steps;
  EXPECT_TRUE(holds(steps, "repaired: 33 gone, 3 left alone, 6 without effect\n")) << steps;
  EXPECT_TRUE(holds(steps, "left alone: HKEY_")) << steps;
}

TEST_F(NotedRunTest, AnUndoAndASearchAreNoted) {
  noted({"undo", "on"});
  noted({"fix", "--yes"});
  EXPECT_TRUE(holds(noted({"undo", "restore", "1"}), "restored entry 1: "));
  EXPECT_TRUE(holds(noted({"search", ":\\", "--in", "HKCU"}), "searched HKEY_CURRENT_USER: "));
}

}  // namespace
}  // namespace zelvreg::console
