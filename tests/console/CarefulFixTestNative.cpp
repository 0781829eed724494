// From the command line on, on a computer with references that are dead, alive and undecidable; the
// Windows program takes no such folder.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "console/CommandRun.h"
#include "machine/TemporaryFolder.h"
#include "support/ParsedJson.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

using Json = nlohmann::json;
using Arguments = std::vector<std::string>;

// Values are not protected, so that nothing but their confidence decides.
constexpr const char* registry = R"(Windows Registry Editor Version 5.00

[HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows NT\CurrentVersion]
"SystemRoot"="C:\\Windows"

[HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion]
"ProgramFilesDir"="C:\\Program Files"

[HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion\Run]
"Dead"="C:\\Gone\\gone.exe"
"Share"="\\\\server\\x\\a.exe"
"Drive"="E:\\x\\a.exe"
"Alive"="%ProgramFiles%\\Real\\app.exe"

[HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\zelvane\Zelvane Tuner Deluxe\regscan]
"protect"="0"
)";

class CarefulFixTest : public ::testing::Test, protected CommandRun {
 protected:
  CarefulFixTest() {
    home.write("registry.reg", registry);
    for (const char* folder :
         {"C/Windows/System32", "C/Windows/SysWOW64", "C/Program Files (x86)", "C/Users/User"}) {
      home.makeFolder(folder);
    }
    home.write("C/Program Files/Real/app.exe", "x");
  }

  int run(Arguments arguments) {
    arguments.insert(arguments.begin() + 1, {"--only", "startup"});
    return onMachine(home.path().string(), std::move(arguments));
  }
  void addKey(const std::string& key, const std::string& valueLine) const {
    home.write("registry.reg", home.read("registry.reg") + "\n[" + key + "]\n" + valueLine + "\n");
  }
  void setPolicy() const {
    addKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane\\zelvreg", R"("careful"="1")");
  }
  // The startup programs that the registry still has, by name.
  [[nodiscard]] Arguments left() const {
    Arguments names;
    const std::string text = home.read("registry.reg");
    for (const char* name : {"Dead", "Share", "Drive", "Alive"}) {
      if (contains(text, "\"" + std::string(name) + "\"=")) {
        names.emplace_back(name);
      }
    }
    return names;
  }
  // What a scan says of each startup program.
  std::map<std::string, Json> scanned() {
    run({"scan", "--json"});
    std::map<std::string, Json> findings;
    const Json result = fixture::parsedJson(out.str());
    for (const Json& finding : result["findings"]) {
      findings[finding["badValue"]] = finding;
    }
    return findings;
  }

  const fixture::TemporaryFolder home;
  const Arguments all{"Dead", "Share", "Drive", "Alive"};
  const Arguments undecided{"Share", "Drive", "Alive"};
};

TEST_F(CarefulFixTest, AScanTicksWhatIsSurelyDeadAndSaysWhyNotTheRest) {
  auto findings = scanned();
  ASSERT_EQ(findings.size(), 4U);
  EXPECT_EQ(findings["Dead"]["confidence"], "sure");
  EXPECT_EQ(findings["Dead"]["checked"], true);
  EXPECT_FALSE(findings["Dead"]["tested"].empty());
  for (const auto& [name, reason] : {std::pair{"Share", "share"},
                                     {"Drive", "drive-absent"},
                                     {"Alive", "found-with-owner-variables"}}) {
    const Json& reasons = findings[name]["reasons"];
    EXPECT_EQ(findings[name]["confidence"], "unsure") << name;
    EXPECT_EQ(findings[name]["checked"], false) << name;
    EXPECT_NE(std::ranges::find(reasons, reason), reasons.end()) << findings[name];
  }
}

TEST_F(CarefulFixTest, ARepairTakesWhatIsSurelyDead) {
  EXPECT_EQ(run({"fix", "--yes"}), nothingFound);
  EXPECT_EQ(left(), undecided);
  EXPECT_NE(error.str().find("zelvreg: 1 surely dead, none likely, 3 unsure and left alone "
                             "(--all takes them too)\nzelvreg: Do You want to Fix selected "
                             "items\n"),
            std::string::npos)
      << error.str();
}

TEST_F(CarefulFixTest, WithTheSafeguardLiftedEveryRowGoes) {
  for (const Arguments& lifting : {Arguments{"--all"}, {"--min-confidence", "unsure"}}) {
    home.write("registry.reg", registry);
    Arguments arguments{"fix", "--yes"};
    arguments.insert(arguments.end(), lifting.begin(), lifting.end());
    EXPECT_EQ(run(arguments), nothingFound);
    EXPECT_EQ(left(), Arguments{}) << lifting.front();
  }
}

TEST_F(CarefulFixTest, ToTheLetterTheLeastConfidenceStillNarrows) {
  run({"fix", "--yes", "--as-described", "--min-confidence", "likely"});
  // The share is asked then, and it does not matter here what that says.
  Arguments kept = left();
  std::erase(kept, "Share");
  EXPECT_EQ(kept, (Arguments{"Drive", "Alive"}));
  run({"fix", "--yes", "--as-described"});
  EXPECT_EQ(left(), Arguments{});
}

TEST_F(CarefulFixTest, TheSettingLiftsTheSafeguard) {
  addKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan",
         R"("careful"="0")");
  run({"fix", "--yes"});
  EXPECT_EQ(left(), Arguments{});
}

TEST_F(CarefulFixTest, APolicyForbidsToLiftIt) {
  setPolicy();
  for (const char* option : {"--all", "--as-described"}) {
    EXPECT_THROW(run({"fix", "--yes", option}), UsageError) << option;
  }
  EXPECT_THROW(run({"fix", "--yes", "--min-confidence", "unsure"}), UsageError);
  EXPECT_EQ(left(), all);
  run({"fix", "--yes", "--min-confidence", "sure"});
  EXPECT_EQ(left(), undecided);
}

TEST_F(CarefulFixTest, AnOlderResultTakesNothingThatIsUnsureNow) {
  run({"scan", "--json", "--as-described"});
  Json result = fixture::parsedJson(out.str());
  for (Json& finding : result["findings"]) {
    for (const char* newer : {"confidence", "reasons", "tested"}) {
      finding.erase(newer);
    }
  }
  home.write("older.json", result.dump());
  const Arguments fix{"fix", "--yes", "--from", (home.path() / "older.json").string()};
  EXPECT_EQ(run(fix), nothingFound);
  EXPECT_EQ(left(), undecided);
  EXPECT_NE(error.str().find(" 3 are unsure and left alone"), std::string::npos) << error.str();
}

TEST_F(CarefulFixTest, WhatWasTickedInAReviewGoes) {
  run({"scan", "--json"});
  Json result = fixture::parsedJson(out.str());
  for (Json& finding : result["findings"]) {
    finding["checked"] = finding["badValue"] == "Share";
  }
  home.write("reviewed.json", result.dump());
  run({"fix", "--yes", "--from", (home.path() / "reviewed.json").string()});
  EXPECT_EQ(left(), (Arguments{"Dead", "Drive", "Alive"}));
}

TEST_F(CarefulFixTest, ASuiteHasEveryRowRepairedUnlessAPolicyKeepsTheProgramCareful) {
  for (const char* mode : {"w4", "w4-c4"}) {
    EXPECT_EQ(onMachine(home.path().string(), {mode}), nothingFound);
    EXPECT_EQ(left(), mode == std::string("w4") ? all : Arguments{});
  }
  home.write("registry.reg", registry);
  setPolicy();
  EXPECT_EQ(onMachine(home.path().string(), {"w4-c4"}), nothingFound);
  EXPECT_EQ(left(), undecided);
}

TEST_F(CarefulFixTest, TheReportGivesTheReasons) {
  run({"scan", "--report", (home.path() / "report.txt").string(), "--report-evidence"});
  EXPECT_NE(home.read("report.txt")
                .find("  |  Startup programs  |  unsure  |  share\r\n"
                      "    It names a file on another computer"),
            std::string::npos)
      << home.read("report.txt");
}

}  // namespace
}  // namespace zelvreg::console
