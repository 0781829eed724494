#include "console/MergeCommand.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "console/ResultFiles.h"
#include "fleet/MadeResult.h"
#include "support/ParsedJson.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;
using fleet::madeFinding;
using fleet::madeLines;
using fleet::madeResult;

// A folder with results.
class MergeCommand : public ::testing::Test {
 protected:
  MergeCommand() {
    fs::remove_all(folder);
    fs::create_directories(folder / "results" / "below.json");
    write("results/a.json", textOfJson(madeResult("A", {madeFinding("C:\\x.dll")})));
    write("results/B.JSONL",
          madeLines("B", {madeFinding("C:\\x.dll"), madeFinding("font", "font")}));
    write("results/notes.txt", "no result");
    options.results = {path("results")};
    options.now = "2026-11-23T06:53:29Z";
  }
  ~MergeCommand() override { fs::remove_all(folder); }

  [[nodiscard]] std::string path(const std::string& name) const { return (folder / name).string(); }

  void write(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder / name, std::ios::binary) << bytes;
  }

  [[nodiscard]] std::string content(const std::string& name) const {
    std::ifstream file(folder / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  int run(const std::string& typed = "") {
    std::istringstream input(typed);
    out.str("");
    error.str("");
    return merge(options, input, {.out = out, .error = error});
  }

  fs::path folder =
      fs::temp_directory_path() / (std::string("zelvreg-merge-") +
                                   ::testing::UnitTest::GetInstance()->current_test_info()->name());
  MergeOptions options;
  std::ostringstream out;
  std::ostringstream error;
};

TEST_F(MergeCommand, PrintsTablesWhereNoFileIsAskedFor) {
  write("results/c.error", "the disk is encrypted\n");
  EXPECT_EQ(run(), nothingFound);
  EXPECT_TRUE(contains(out.str(),
                       "2 computers (0 incomplete), 1 failure, 3 problems, "
                       "2 different references.\n"))
      << out.str();
  EXPECT_TRUE(contains(out.str(), "        2         2  Shared DLLs  C:\\x.dll\n")) << out.str();
  EXPECT_TRUE(contains(out.str(), "c.error  the disk is encrypted\n")) << out.str();
  EXPECT_EQ(error.str(), "");
}

TEST_F(MergeCommand, WritesEachFileThatIsAskedFor) {
  options.json = path("all.json");
  options.csv = path("all.csv");
  options.html = path("all.html");
  EXPECT_EQ(run(), nothingFound);
  EXPECT_EQ(out.str(), "");
  const auto object = fixture::parsedJson(content("all.json"));
  EXPECT_EQ(object["made"], options.now);
  EXPECT_EQ(object["categories"][0]["name"], "Shared DLLs");
  EXPECT_TRUE(contains(content("all.csv"), "Shared DLLs,C:\\x.dll,2,2,2,0,0,HKEY_X\\Key\n"));
  EXPECT_TRUE(contains(content("all.html"), R"("csv":"all.csv")"));
}

TEST_F(MergeCommand, AFileAndItsFolderAreOne) {
  options.results = {path("results"), path("results/a.json"), path("results/../results/a.json")};
  options.json = "-";
  EXPECT_EQ(run(), nothingFound);
  EXPECT_EQ(fixture::parsedJson(out.str())["counts"]["findings"], 3);
  EXPECT_EQ(error.str(), "");
}

TEST_F(MergeCommand, ReadsStandardInputOnce) {
  options.results = {"-", path("results/a.json"), "-"};
  options.json = "-";
  EXPECT_EQ(run(textOfJson(madeResult("C", {})) + madeLines("D", {madeFinding("d")})),
            nothingFound);
  EXPECT_EQ(fixture::parsedJson(out.str())["counts"]["computers"], 3);
  EXPECT_EQ(run(""), failed);
  EXPECT_EQ(error.str(), "zelvreg: standard input is empty; scan that computer again\n");
}

TEST_F(MergeCommand, ABadFileIsOneLineAndTheOthersAreMerged) {
  write("results/cut.json", "{\"schema\": 1,");
  write("results/new.json", "{\"schema\": 2}");
  options.results.push_back(path("missing\x1b[2J.json"));
  options.json = "-";
  EXPECT_EQ(run(), failed);
  const auto object = fixture::parsedJson(out.str());
  EXPECT_EQ(object["counts"]["computers"], 2);
  EXPECT_EQ(object["counts"]["failed"], 3);
  const std::string told = error.str();
  const auto lines = split(told, "\n");
  ASSERT_EQ(lines.size(), 4U) << told;
  EXPECT_FALSE(contains(told, "\x1b"));
  EXPECT_TRUE(contains(lines[0], "cut.json is cut short")) << lines[0];
}

TEST_F(MergeCommand, WithoutAnyResultAnEarlierReportStays) {
  options.json = path("fleet.json");
  EXPECT_EQ(run(), nothingFound);
  const std::string before = content("fleet.json");
  options.results = {path("missing")};
  EXPECT_EQ(run(), failed);
  EXPECT_TRUE(contains(error.str(), "no result could be merged, so nothing was written"))
      << error.str();
  EXPECT_EQ(content("fleet.json"), before);
}

TEST_F(MergeCommand, TwoResultsOfOneComputerAreOneLine) {
  fleet::Json newer = madeResult("A", {});
  newer["started"] = "2026-11-24T00:00:00Z";
  write("results/newer.json", textOfJson(newer));
  EXPECT_EQ(run(), nothingFound);
  EXPECT_TRUE(contains(error.str(), "of A the result of 2026-11-24T00:00:00Z counts"))
      << error.str();
  EXPECT_TRUE(contains(out.str(), "2 computers"));
}

TEST_F(MergeCommand, OtherNamesAreDrawnAnew) {
  options.isAnonymous = true;
  options.json = "-";
  EXPECT_EQ(run(), nothingFound);
  const auto object = fixture::parsedJson(out.str());
  EXPECT_EQ(object["anonymous"], true);
  EXPECT_EQ(object["computers"][0]["name"], "computer-1");
  EXPECT_EQ(object["computers"][0]["identity"], "");
}

TEST_F(MergeCommand, AFolderWithoutResultsIsRefused) {
  fs::create_directory(folder / "empty");
  options.results = {path("empty")};
  EXPECT_THROW(run(), std::runtime_error);
}

TEST(SpooledInput, LeavesNothingBehind) {
  fs::path file;
  {
    SpooledInput spooled;
    std::istringstream input("text");
    file = spooled.take(input);
    EXPECT_EQ(fs::file_size(file), 4U);
  }
  EXPECT_FALSE(fs::exists(file.parent_path()));
}

TEST(MergeCommandLine, NeedsNoComputer) {
  const char* const arguments[] = {"zelvreg",
                                   "merge",
                                   "a",
                                   "-",
                                   "--html",
                                   "h",
                                   "--csv",
                                   "-",
                                   "--anonymous",
                                   "--now",
                                   "2026-11-23T06:53:29Z"};
  const MergeOptions& asked =
      parseCommandLine(static_cast<int>(std::size(arguments)), arguments).options.merge;
  EXPECT_EQ(asked.results, (std::vector<std::string>{"a", "-"}));
  EXPECT_EQ(asked.html, "h");
  EXPECT_EQ(asked.csv, "-");
  EXPECT_TRUE(asked.isAnonymous);
  EXPECT_EQ(asked.now, "2026-11-23T06:53:29Z");
  EXPECT_TRUE(needsNoComputer(Command::Merge));
}

TEST(MergeCommandLine, RefusesTwoOutputsInOnePlace) {
  const char* const arguments[] = {"zelvreg", "merge", "a", "--json", "-", "--csv", "-"};
  EXPECT_THROW(parseCommandLine(static_cast<int>(std::size(arguments)), arguments), UsageError);
  EXPECT_THROW(parseCommandLine(2, arguments), UsageError);
}

}  // namespace
}  // namespace zelvreg::console
