// All users of a disk, from the command line on; the Windows program takes no disk.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "console/SeveralUsers.h"
#include "machine/RealDisk.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

class EveryUserTest : public SeveralUsersTest {
 protected:
  static constexpr const char* only = "fonts,com-classes,user-classes,global-classes,startup";

  static std::vector<std::string> asAll(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--user", "all", "--only", only});
    return arguments;
  }

  int fixAll(std::vector<std::string> arguments = {}) {
    arguments.insert(arguments.begin(), {"fix", "--yes"});
    return onDisk(asAll(std::move(arguments)));
  }

  // Rows of a finding list that a repair takes.
  [[nodiscard]] static std::size_t tickedIn(const nlohmann::json& object) {
    return static_cast<std::size_t>(std::ranges::count_if(
        object["findings"],
        [](const auto& finding) { return finding["checked"].template get<bool>(); }));
  }

  // What differs from before a repair, but for the program's own keys.
  [[nodiscard]] Lines changesSince(const std::vector<fixture::HiveContent>& before) const {
    Lines lines;
    const auto now = contents();
    for (std::size_t index = 0; index < now.size(); ++index) {
      for (const std::string& line : fixture::differences(before[index], now[index])) {
        if (line.find("zelvane") == std::string::npos) {
          lines.insert(std::to_string(index) + line);
        }
      }
    }
    return lines;
  }

  [[nodiscard]] std::set<fs::path> exports() const {
    std::set<fs::path> files;
    for (const auto& entry :
         fs::directory_iterator(disk.path() / "Program Files/zelvreg/backup/registry")) {
      files.insert(entry.path());
    }
    return files;
  }

  [[nodiscard]] std::string lineOf(const std::string& part) const {
    const std::string text = out.str();
    const std::size_t found = text.find(part);
    const std::size_t start = found == std::string::npos ? found : text.rfind('\n', found) + 1;
    return found == std::string::npos ? "" : text.substr(start, text.find('\n', found) - start);
  }
};

TEST_F(EveryUserTest, EachIsScannedOnceAndTheComputerOnce) {
  std::multiset<Found> expected{{"", "", "1", "Gone"},
                                {"Anna", annaSid, "8", R"(C:\gone.dll)"},
                                {"Anna", annaSid, "11", R"(C:\gone.dll)"},
                                {"Anna", annaSid, "12", R"(C:\gone.dll)"}};
  const auto object = result(asAll({"scan", "--json"}));
  for (const auto& [name, sid] : {std::pair("Anna", annaSid),
                                  {"Bert", bertSid},
                                  {"LocalService", serviceSid},
                                  {"systemprofile", systemSid}}) {
    expected.insert({{name, sid, "144", "Gone"}, {name, sid, "144", "Own"}});
  }
  auto found = foundIn(object);
  // Nobody has an account for what new users get.
  EXPECT_EQ(std::erase_if(found, [](const Found& one) { return std::get<0>(one) == "Default"; }),
            2U);
  EXPECT_EQ(found, expected);
  EXPECT_EQ(object["total"], expected.size() + 2);
  std::map<std::string, std::string> problems;
  for (const auto& category : object["categories"]) {
    problems[category["key"]] = category["problems"];
  }
  EXPECT_EQ(problems["font"], "1");
  EXPECT_EQ(problems["14"], "10");
}

TEST_F(EveryUserTest, VariablesAreThoseOfEach) {
  const auto found = result(asAll({"scan", "--json"}));
  for (const auto& finding : found["findings"]) {
    if (finding["badValue"] == "Own") {
      const bool isAnnas = finding["user"] == "Anna";
      EXPECT_EQ(finding["confidence"], isAnnas ? "sure" : "unsure") << finding;
    }
  }
}

TEST_F(EveryUserTest, TablesAndCsvSayWhose) {
  EXPECT_EQ(onDisk(asAll({"scan"})), problemsFound);
  EXPECT_NE(lineOf(" Bert ").find(R"(HKCU\Software)"), std::string::npos) << out.str();
  EXPECT_NE(lineOf("  User  ").find("Sure"), std::string::npos) << out.str();
  EXPECT_EQ(onDisk(asAll({"scan", "--csv"})), problemsFound);
  EXPECT_TRUE(
      out.str().starts_with("location,badValue,kindCode,rootName,subKey,iconKey,checked,"
                            "confidence,reasons,tested,user,sid\n"));
  EXPECT_NE(out.str().find(std::string(",Bert,") + bertSid + "\n"), std::string::npos);
  EXPECT_NE(out.str().find("gone.ttf,,\n"), std::string::npos) << out.str();
}

// A result says whose each finding is, also where there is one user alone; a table has no column.
TEST_F(EveryUserTest, WithoutItTheTableTellsNoUsersApart) {
  const auto found = result({"scan", "--json", "--only", only});
  ASSERT_EQ(found["users"].size(), 1U);
  for (const auto& finding : found["findings"]) {
    EXPECT_EQ(finding["rootName"] != "HKEY_LOCAL_MACHINE",
              finding["sid"] == found["users"][0]["sid"])
        << finding.dump();
  }
  EXPECT_EQ(onDisk({"scan", "--only", only}), problemsFound);
  EXPECT_EQ(lineOf("  User  "), "");
}

TEST_F(EveryUserTest, ARepairTakesTheDeadOfAll) {
  const auto before = contents();
  EXPECT_EQ(fixAll({"--json"}), nothingFound) << error.str();
  EXPECT_EQ(tickedIn(result(asAll({"scan", "--json"}))), 0U) << out.str();
  const std::string runKey = std::string("\\") + run + "|";
  Lines expected{R"(0-\Microsoft\Windows NT\CurrentVersion\Fonts|Gone)", "1-" + runKey + "Own",
                 std::string(R"(2-\CLSID\)") + server + R"(\InprocServer32)",
                 std::string(R"(2-\CLSID\)") + server + R"(\InprocServer32|)"};
  for (const char* hive : {"1", "3", "4", "5", "6"}) {
    expected.insert(std::string(hive) + "-" + runKey + "Gone");
  }
  EXPECT_EQ(changesSince(before), expected);
}

TEST_F(EveryUserTest, UndoBringsBackWhatEachHad) {
  EXPECT_EQ(onDisk({"undo", "on"}), nothingFound);
  const auto before = contents();
  EXPECT_EQ(fixAll(), nothingFound) << error.str();
  EXPECT_EQ(onDisk({"undo", "list", "--user", "Bert"}), nothingFound);
  const std::string list = out.str();
  for (const char* name : {"Anna", "Bert", "Default", "LocalService", "systemprofile"}) {
    EXPECT_NE(list.find(name), std::string::npos) << list;
  }
  for (int entry = 1; entry <= 5; ++entry) {
    EXPECT_EQ(onDisk({"undo", "restore", std::to_string(entry)}), nothingFound) << error.str();
  }
  EXPECT_EQ(changesSince(before), Lines{});
}

// Of the current user's entries a journal restores those of classes.
TEST_F(EveryUserTest, AJournalFindsItsUserAgain) {
  EXPECT_EQ(onDisk({"undo", "on"}), nothingFound);
  EXPECT_EQ(fixAll({"--no-backup"}), nothingFound) << error.str();
  EXPECT_EQ(onDisk({"undo", "list", "--user", "Bert"}), nothingFound);
  EXPECT_TRUE(lineOf("Anna").starts_with("  1  ")) << out.str();
  const auto before = contents();
  EXPECT_EQ(onDisk({"undo", "restore", "1", "--journal", "--user", "Bert"}), nothingFound);
  const Lines changes = changesSince(before);
  EXPECT_TRUE(changes.contains(std::string(R"(2+\CLSID\)") + server + R"(\InprocServer32|)"));
  EXPECT_TRUE(
      std::ranges::none_of(changes, [](const std::string& line) { return line.starts_with("3"); }));
}

TEST_F(EveryUserTest, AnExportFindsItsUserAgain) {
  const auto before = contents();
  EXPECT_EQ(fixAll(), nothingFound) << error.str();
  const auto files = exports();
  EXPECT_EQ(files.size(), 5U);
  for (const fs::path& file : files) {
    EXPECT_EQ(onDisk({"undo", "restore-export", file.string()}), nothingFound) << error.str();
  }
  EXPECT_EQ(changesSince(before), Lines{});
}

TEST_F(EveryUserTest, TheExportOfOneUserIsNeverRestoredToAnother) {
  EXPECT_EQ(onDisk({"fix", "--yes", "--user", "Bert", "--only", "startup"}), nothingFound);
  const auto before = contents();
  const fs::path file = *exports().begin();
  fs::remove(disk.path() / bert);
  fs::create_directory(disk.path() / bert);
  EXPECT_EQ(onDisk({"undo", "restore-export", file.string()}), failed);
  EXPECT_NE(error.str().find(bertSid), std::string::npos) << error.str();
  fs::remove(disk.path() / bert);
  { const fixture::HiveBuilder empty = hive(bert); }
  EXPECT_EQ(content(anna), before[1]);
}

TEST_F(EveryUserTest, MaxCountsTheRowsOfAll) {
  const auto before = allFiles();
  EXPECT_EQ(fixAll({"--max", "5"}), failed);
  EXPECT_NE(error.str().find("and --max is 5"), std::string::npos) << error.str();
  EXPECT_TRUE(allFiles() == before);
}

TEST_F(EveryUserTest, ARehearsalNamesTheKeysOfEachAndChangesNothing) {
  const auto before = allFiles();
  EXPECT_EQ(fixAll({"--dry-run", "--json"}), problemsFound) << error.str();
  const auto takes = fixture::parsedJson(out.str())["dryRun"]["takes"];
  const std::string berts = std::string(R"(HKEY_USERS\)") + bertSid + "\\" + run;
  EXPECT_TRUE(std::ranges::any_of(takes, [&](const std::string& place) {
    return place.size() > berts.size() &&
           std::equal(berts.begin(), berts.end(), place.begin(), [](char first, char second) {
             return std::tolower(first) == std::tolower(second);
           });
  })) << takes;
  EXPECT_TRUE(allFiles() == before);
}

TEST_F(EveryUserTest, AReviewedFindingIsItsUsersAlone) {
  auto object = result(asAll({"scan", "--json"}));
  for (auto& finding : object["findings"]) {
    finding["checked"] = finding["user"] == "Bert" && finding["badValue"] == "Gone";
  }
  const auto before = contents();
  const fixture::TemporaryFolder folder;
  folder.write("reviewed.json", object.dump());
  const std::string file = folder.path() / "reviewed.json";
  // Without users it means nobody.
  EXPECT_EQ(onDisk({"fix", "--yes", "--from", file, "--only", only}), nothingFound);
  EXPECT_NE(error.str().find("1 of the 1 findings"), std::string::npos) << error.str();
  EXPECT_EQ(changesSince(before), Lines{});
  EXPECT_EQ(fixAll({"--from", file}), nothingFound) << error.str();
  EXPECT_EQ(changesSince(before), Lines{std::string("3-\\") + run + "|Gone"});
}

TEST_F(EveryUserTest, ADamagedProfileIsNamedAndTheOthersAreDone) {
  fs::create_directories(disk.path() / "Users/Carl");
  disk.write(carl, "no hive");
  EXPECT_EQ(onDisk(asAll({"scan"})), failed);
  EXPECT_NE(error.str().find("Carl"), std::string::npos) << error.str();
  EXPECT_NE(lineOf(" Bert "), "");
  EXPECT_EQ(fixAll(), failed);
  EXPECT_NE(error.str().find("Carl"), std::string::npos) << error.str();
  EXPECT_EQ(tickedIn(result(asAll({"scan", "--json"}))), 0U) << out.str();
}

TEST_F(EveryUserTest, AProfileThatMustNotBeWrittenIsLeftAsItIs) {
  constexpr std::size_t firstSequence = 4;
  makeUnclean(bert, firstSequence);
  const std::string berts = disk.read(bert);
  EXPECT_EQ(fixAll(), failed);
  EXPECT_NE(error.str().find("nothing of Bert is repaired"), std::string::npos) << error.str();
  EXPECT_EQ(disk.read(bert), berts);
  const auto object = result(asAll({"scan", "--json"}));
  EXPECT_EQ(foundIn(object).count({"Bert", bertSid, "144", "Gone"}), 1U) << object;
}

TEST_F(EveryUserTest, DamageOfTheComputerStopsTheRepair) {
  constexpr std::size_t firstSequence = 4;
  makeUnclean(software, firstSequence);
  const auto before = allFiles();
  EXPECT_EQ(fixAll(), failed);
  EXPECT_NE(error.str().find("SOFTWARE"), std::string::npos) << error.str();
  EXPECT_NE(error.str().find("nothing was repaired"), std::string::npos) << error.str();
  EXPECT_TRUE(allFiles() == before);
}

TEST_F(EveryUserTest, TheReportHasAPartForEach) {
  const fixture::TemporaryFolder folder;
  EXPECT_EQ(onDisk(asAll({"scan", "--report", (folder.path() / "report.txt").string()})),
            problemsFound);
  const std::string text = folder.read("report.txt");
  const std::size_t berts = text.find(std::string("User Bert (") + bertSid + ")\r\n");
  ASSERT_NE(berts, std::string::npos) << text;
  EXPECT_NE(text.find("Startup programs", berts), std::string::npos);
}

TEST_F(EveryUserTest, AProfileOnAnotherDriveIsFoundByTheList) {
  const fixture::TemporaryFolder other;
  fs::create_directories(other.path() / "Profiles/Dora");
  {
    fixture::HiveBuilder dora(other.path() / "Profiles/Dora/NTUSER.DAT");
    dora.text(run, "Gone", R"(C:\gone.exe)");
  }
  hive(software).text(R"(Microsoft\Windows NT\CurrentVersion\ProfileList\S-1-5-21-7-7-7-1004)",
                      "ProfileImagePath", R"(D:\Profiles\Dora)");
  EXPECT_EQ(onDisk(asAll({"scan"})), failed);
  EXPECT_NE(error.str().find("--drive D=DIR"), std::string::npos) << error.str();
  const auto object = result(asAll({"scan", "--json", "--drive", "D=" + other.path().string()}));
  EXPECT_EQ(foundIn(object).count({"Dora", "S-1-5-21-7-7-7-1004", "144", "Gone"}), 1U) << object;
}

// The users that its HKEY_USERS holds; the current one by the name that the machine gives it.
TEST_F(EveryUserTest, AMachineFolderHasSeveralUsersToo) {
  const fixture::TemporaryFolder folder;
  const std::string dead = std::string("\\") + run + "]\n\"Gone\"=\"C:\\\\gone.exe\"\n";
  folder.write("registry.reg", "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER" + dead +
                                   "\n[HKEY_USERS\\" + bertSid + dead);
  folder.write("C/Windows/System32/kernel32.dll", "");
  const std::vector<std::string> all{"--user", "all", "--only", "startup"};
  const auto rowsOf = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), all.begin(), all.end());
    onMachine(folder.path().string(), arguments);
    std::set<std::string> users;
    const auto object = fixture::parsedJson(out.str());
    for (const auto& finding : object["findings"]) {
      users.insert(finding["user"]);
    }
    return users;
  };
  const std::set<std::string> users = rowsOf({"scan", "--json"});
  EXPECT_EQ(users.size(), 2U) << out.str();
  EXPECT_FALSE(users.contains(""));
  EXPECT_EQ(rowsOf({"fix", "--yes", "--json"}), std::set<std::string>());
  EXPECT_EQ(rowsOf({"scan", "--json"}), std::set<std::string>());
}

TEST(RealUsers, AreAllScannedAndRepairedAndHaveEverythingBack) {
  if (!fixture::hasRealDisks()) {
    GTEST_SKIP() << "ZELVREG_REAL_HIVES names no folder with disks";
  }
  const fixture::TemporaryFolder folder;
  const fs::path root = folder.path() / "disk";
  fixture::copyRealDisk("windows7", root);
  CommandRun console;
  const auto scan = [&] {
    console.on("--offline", root.string(), {"scan", "--user", "all", "--json"});
    // The user whose hive was written last comes first.
    const auto findings = fixture::parsedJson(console.out.str())["findings"];
    return std::multiset<nlohmann::json>(findings.begin(), findings.end());
  };
  const auto before = scan();
  std::set<std::string> users;
  for (const auto& finding : before) {
    users.insert(finding["user"]);
  }
  EXPECT_TRUE(users.contains("first"));
  EXPECT_TRUE(users.contains("second"));
  console.on("--offline", root.string(), {"fix", "--user", "all", "--all", "--yes"});
  EXPECT_LT(scan().size(), before.size());
  std::size_t exports = 0;
  for (const auto& entry : fs::directory_iterator(root / "Program Files/zelvreg/backup/registry")) {
    ++exports;
    EXPECT_EQ(
        console.on("--offline", root.string(), {"undo", "restore-export", entry.path().string()}),
        nothingFound)
        << console.error.str();
  }
  EXPECT_EQ(exports, 2U);
  EXPECT_EQ(scan(), before);
}

TEST_F(EveryUserTest, OnlyScansAndRepairsTakeAll) {
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {"undo", "list"}, {"search", "x"}, {"exclude", "list"}, {"languages"}}) {
    auto all = arguments;
    all.insert(all.end(), {"--user", "all"});
    EXPECT_EQ(onDisk(all), failed);
    EXPECT_NE(error.str().find("--user all goes with scan, fix and detect"), std::string::npos);
  }
}

}  // namespace
}  // namespace zelvreg::console
