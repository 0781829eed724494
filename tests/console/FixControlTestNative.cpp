// What a user may ask of a repair beforehand; the Windows program takes no machine folder.
#include <gtest/gtest.h>

#include "console/CommandRun.h"
#include "machine/TemporaryFolder.h"
#include "support/ParsedJson.h"
#include "support/SourceFolder.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

class FixControlTest : public ::testing::Test, protected CommandRun {
 protected:
  FixControlTest() {
    fs::copy(sourceFolder() + "/demo/machine", home.path() / "machine",
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    registry = home.read("machine/registry.reg");
  }

  int run(std::vector<std::string> arguments) {
    return onMachine((home.path() / "machine").string(), std::move(arguments));
  }
  std::string refusalOf(const std::vector<std::string>& arguments) {
    try {
      run(arguments);
    } catch (const std::runtime_error& refusal) {
      return refusal.what();
    }
    return "(none)";
  }

  [[nodiscard]] Json result() const { return fixture::parsedJson(out.str()); }
  [[nodiscard]] bool isUntouched() const {
    return home.read("machine/registry.reg") == registry &&
           !home.has("machine/C/Program Files (x86)/zelvreg/backup");
  }
  std::string fileWith(const Json& content) {
    home.write("result.json", content.dump());
    return (home.path() / "result.json").string();
  }

  fixture::TemporaryFolder home;
  std::string registry;
};

TEST_F(FixControlTest, ARehearsalListsEachDeleteAndChangesNothing) {
  EXPECT_EQ(run({"fix", "--all", "--dry-run", "--json"}), problemsFound);
  const Json rehearsal = result()["dryRun"];
  EXPECT_TRUE(isUntouched());
  EXPECT_NE(error.str().find(" unsure and ticked all the same\n"), std::string::npos)
      << error.str();
  EXPECT_EQ(rehearsal["leavesAlone"].size(), 3U);
  run({"fix", "--all", "--yes", "--json"});
  EXPECT_EQ(result()["repaired"], rehearsal["rows"]);
  EXPECT_EQ(result()["leftAlone"], rehearsal["leavesAlone"]);
}

TEST_F(FixControlTest, WhatARehearsalListsIsGoneAfterTheRepair) {
  run({"fix", "--all", "--dry-run"});
  EXPECT_NE(out.str().find("\n  HKEY_LOCAL_MACHINE\\Software\\Microsoft\\windows\\currentversion\\"
                           "Run, value \"OldTool\"\n"),
            std::string::npos)
      << out.str();
  EXPECT_NE(out.str().find("and leave alone\n"), std::string::npos);
  EXPECT_NE(out.str().find("nothing was changed.\n"), std::string::npos);
}

TEST_F(FixControlTest, ARehearsalOfWhatCannotGoEndsWithZero) {
  EXPECT_EQ(run({"fix", "--all", "--dry-run", "--kinds", "3", "--only", "uninstall"}),
            nothingFound);
  EXPECT_NE(out.str().find("A repair would take\n  nothing\n"), std::string::npos) << out.str();
}

TEST_F(FixControlTest, OnlyTheRowsOfAReviewedResultAreRepaired) {
  run({"scan", "--json", "--only", "startup,mui-cache"});
  Json reviewed = result();
  ASSERT_EQ(reviewed["findings"].size(), 4U);
  reviewed["findings"][0]["checked"] = true;
  for (const std::size_t row : {1U, 2U, 3U}) {
    reviewed["findings"][row]["checked"] = false;
  }
  EXPECT_EQ(run({"fix", "--all", "--yes", "--json", "--from", fileWith(reviewed)}), nothingFound);
  EXPECT_EQ(result()["repaired"], 1);
  EXPECT_EQ(home.read("machine/registry.reg").find("\"OldTool\"=\"C:"), std::string::npos);
}

TEST_F(FixControlTest, WhatIsNoLongerFoundIsToldAndLeftOut) {
  Json finding = {{"location", "x"},
                  {"badValue", "y"},
                  {"kindCode", "144"},
                  {"rootName", "HKEY_LOCAL_MACHINE"},
                  {"subKey", "Software"}};
  EXPECT_EQ(run({"fix", "--all", "--yes", "--json", "--from",
                 fileWith({{"findings", {finding, finding}}})}),
            nothingFound);
  EXPECT_NE(error.str().find("2 of the 2 findings in "), std::string::npos) << error.str();
  EXPECT_EQ(result()["repaired"], 0);
  EXPECT_TRUE(isUntouched());
}

// Three rows of shared DLLs repeat others.
TEST_F(FixControlTest, WhatWasNotReviewedAsUnsureIsLeftAlone) {
  const std::vector<std::string> fix{"fix", "--dry-run", "--json", "--only", "dlls", "--from"};
  run({"scan", "--json", "--only", "dlls"});
  Json reviewed = result();
  for (Json& finding : reviewed["findings"]) {
    EXPECT_EQ(finding["checked"], finding["confidence"] != "unsure");
    finding["checked"] = true;
  }
  Json older = reviewed;
  for (Json& finding : older["findings"]) {
    finding.erase("confidence");
  }
  const auto checkedRows = [&](const Json& from, std::vector<std::string> more) {
    std::vector<std::string> arguments = fix;
    arguments.push_back(fileWith(from));
    arguments.insert(arguments.end(), more.begin(), more.end());
    run(arguments);
    return std::pair{result()["findings"][3]["checked"] == true,
                     result()["findings"][4]["checked"] == true};
  };
  const std::string left = "unsure and left alone: the file does not call them unsure";
  EXPECT_EQ(checkedRows(reviewed, {}), std::pair(true, true));
  EXPECT_EQ(error.str().find(left), std::string::npos) << error.str();
  EXPECT_EQ(checkedRows(older, {}), std::pair(false, false));
  EXPECT_NE(error.str().find(" 3 are " + left), std::string::npos) << error.str();
  EXPECT_EQ(checkedRows(older, {"--all"}), std::pair(true, true));
  EXPECT_EQ(checkedRows(reviewed, {"--min-confidence", "likely"}), std::pair(false, false));
  reviewed["findings"][3].erase("confidence");
  EXPECT_EQ(checkedRows(reviewed, {}), std::pair(false, true));
  EXPECT_NE(error.str().find(" 1 is " + left), std::string::npos) << error.str();
}

TEST_F(FixControlTest, UnderAPolicyNoReviewMakesAnUnsureFindingGo) {
  run({"scan", "--json", "--only", "dlls"});
  Json reviewed = result();
  reviewed["findings"][3]["checked"] = true;
  home.write("machine/registry.reg",
             home.read("machine/registry.reg") +
                 "\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane\\zelvreg]\n"
                 "\"careful\"=\"1\"\n");
  run({"fix", "--dry-run", "--json", "--only", "dlls", "--from", fileWith(reviewed)});
  EXPECT_EQ(result()["findings"][3]["checked"], false);
  EXPECT_NE(error.str().find("left alone: a policy of this computer"), std::string::npos)
      << error.str();
  for (const std::vector<std::string>& lifting :
       {std::vector<std::string>{"--all"}, {"--min-confidence", "unsure"}, {"--as-described"}}) {
    std::vector<std::string> arguments{"fix", "--yes"};
    arguments.insert(arguments.end(), lifting.begin(), lifting.end());
    const std::string refusal = refusalOf(arguments);
    EXPECT_NE(refusal.find(" contradicts a policy of this computer"), std::string::npos) << refusal;
    EXPECT_NE(refusal.find(lifting.front()), std::string::npos) << refusal;
  }
}

TEST_F(FixControlTest, TheSettingLiftsTheSafeguard) {
  home.write("machine/registry.reg", home.read("machine/registry.reg") +
                                         "\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\"
                                         "Zelvane Tuner Deluxe\\regscan]\n\"careful\"=\"0\"\n");
  run({"scan", "--json", "--only", "dlls"});
  const Json scanned = result();
  for (const Json& finding : scanned["findings"]) {
    EXPECT_EQ(finding["checked"], true);
  }
  run({"fix", "--dry-run", "--json", "--only", "dlls", "--min-confidence", "likely"});
  EXPECT_EQ(result()["findings"][4]["checked"], false);
}

TEST_F(FixControlTest, WhatIsNoResultIsRefused) {
  for (const Json& content : {Json("text"), Json{{"total", 1}}, Json{{"findings", {1}}},
                              Json{{"findings", {{{"location", 5}}}}}}) {
    EXPECT_NE(refusalOf({"fix", "--all", "--yes", "--from", fileWith(content)})
                  .find("is no result of a scan"),
              std::string::npos)
        << content;
  }
  EXPECT_NE(refusalOf({"fix", "--all", "--from", "/no such file"}).find("cannot be read"),
            std::string::npos);
  EXPECT_TRUE(isUntouched());
}

TEST_F(FixControlTest, WithMoreToRepairThanAllowedNothingIs) {
  EXPECT_EQ(refusalOf({"fix", "--all", "--yes", "--max", "32"}),
            "33 findings would be repaired, and --max is 32; nothing was repaired: look at "
            "fix --dry-run, then allow more");
  EXPECT_TRUE(refusalOf({"fix", "--all", "--yes", "--max", "41", "--no-protect"})
                  .starts_with("42 findings"));
  EXPECT_TRUE(isUntouched());
  EXPECT_EQ(run({"fix", "--all", "--yes", "--json", "--max", "33"}), nothingFound);
  EXPECT_EQ(result()["repaired"], 33);
}

}  // namespace
}  // namespace zelvreg::console
