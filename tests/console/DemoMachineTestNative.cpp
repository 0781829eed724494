// The demo machine is a folder that stands for a computer, which the Windows program does not take.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "console/CommandRun.h"
#include "form/Version.h"
#include "machine/TemporaryFolder.h"
#include "support/ParsedJson.h"
#include "support/SourceFolder.h"

namespace zelvreg::console {
namespace {

// Scans a copy of the demo machine from the command line on.
nlohmann::json scanDemo(std::vector<std::string> options, int& status) {
  const fixture::TemporaryFolder copy;
  std::filesystem::copy(
      sourceFolder() + "/demo/machine", copy.path(),
      std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
  options.insert(options.begin(), {"scan", "--json", "--now", "2026-01-31T13:45:06Z"});
  CommandRun command;
  status = command.onMachine(copy.path().string(), std::move(options));
  EXPECT_EQ(command.error.str(), "");
  return fixture::parsedJson(command.out.str());
}

TEST(DemoMachine, AScanIsAsItsPageTells) {
  int status = 0;
  const auto object = scanDemo({}, status);
  std::ifstream page(sourceFolder() + "/demo/scan.json");
  auto expected = fixture::parsedJson(std::string(std::istreambuf_iterator<char>(page), {}));
  // A release changes the version alone.
  expected["program"]["version"] = programVersion();
  // Row by row first, so that a difference is easy to see.
  ASSERT_EQ(object["findings"].size(), expected["findings"].size());
  for (std::size_t row = 0; row < expected["findings"].size(); ++row) {
    EXPECT_EQ(object["findings"][row], expected["findings"][row]) << "row " << row + 1;
  }
  EXPECT_EQ(object, expected);
  EXPECT_EQ(status, problemsFound);
}

TEST(DemoMachine, EveryRowHasAFinding) {
  for (const char* name :
       {"fonts", "dlls", "app-paths", "help-files", "icons", "file-classes", "com-classes",
        "user-classes", "global-classes", "machine-classes", "firewall", "file-extensions",
        "uninstall", "startup", "recent-lists", "mui-cache"}) {
    int status = 0;
    const auto object = scanDemo({"--only", name}, status);
    EXPECT_GT(object["findings"].size(), 0U) << name;
    EXPECT_EQ(status, problemsFound) << name;
  }
}

TEST(DemoMachine, RowsThatWereNotAskedForStayUnticked) {
  int status = 0;
  const auto object = scanDemo({"--only", "fonts"}, status);
  EXPECT_EQ(object["total"], 3);
  EXPECT_EQ(object["categories"][1]["checked"], false);
  EXPECT_EQ(object["categories"][1]["problems"], "");
}

}  // namespace
}  // namespace zelvreg::console
