// Repairs of the demo machine from the command line on; the Windows program takes no such folder.
#include <gtest/gtest.h>

#include <fstream>

#include "console/CommandRun.h"
#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"
#include "support/ParsedJson.h"
#include "support/SourceFolder.h"
#include "support/WholeRegistry.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

class FixTest : public ::testing::Test, protected CommandRun {
 protected:
  FixTest() {
    fs::copy(sourceFolder() + "/demo/machine", copy.path(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
  }

  int run(std::vector<std::string> arguments) {
    return onMachine(copy.path().string(), std::move(arguments));
  }

  fs::path programFolder() const { return copy.path() / "C" / "Program Files (x86)" / "zelvreg"; }

  // Every key with its access list and its values in their order, but the program's own, as lines.
  std::string content() const {
    std::string lines;
    const auto computer = machine::Machine::open(copy.path());
    for (const auto& [path, text] : fixture::wholeRegistry(*computer)) {
      lines.append(path).append("\n").append(text);
    }
    return lines;
  }

  const fixture::TemporaryFolder copy;
};

TEST_F(FixTest, ToTheLetterEveryRowWithAKindLeavesTheList) {
  EXPECT_EQ(run({"fix", "--all", "--yes", "--json", "--no-protect"}), nothingFound);
  const auto object = fixture::parsedJson(out.str());
  EXPECT_EQ(object["repaired"], 42);
  EXPECT_EQ(object["total"], 4);
  for (const auto& finding : object["findings"]) {
    EXPECT_EQ(finding["kindCode"], "");
  }
}

// Left alone are a startup program whose command the rules cut wrongly, an extension that the user
// has chosen programs for, and the list of all records;
// without effect stay two application paths, an empty command and three shared DLLs whose rows have
// the key of the other list.
TEST_F(FixTest, TheCountsTellWhatIsGoneAndWhatIsStillThere) {
  EXPECT_EQ(run({"fix", "--all", "--yes", "--json"}), nothingFound);
  const auto object = fixture::parsedJson(out.str());
  EXPECT_EQ(object["repaired"], 33);
  EXPECT_EQ(object["total"], 13);
  EXPECT_EQ(object["outcome"].dump(), R"({"gone":33,"leftAlone":3,"noEffect":6})");
  EXPECT_EQ(object["leftAlone"].size(), 3U);
  for (const auto& finding : object["findings"]) {
    EXPECT_TRUE(finding["kindCode"].get<std::string>().empty() || finding["checked"] == false)
        << finding;
  }
}

// Of the lists of help files and shared DLLs rows lose their fields to others.
TEST_F(FixTest, WhatARepairLeftIsWhatTheNextScanFinds) {
  const std::string rows =
      "fonts,app-paths,icons,file-classes,com-classes,user-classes,"
      "global-classes,machine-classes,firewall,file-extensions,uninstall,"
      "startup,recent-lists,mui-cache";
  run({"fix", "--all", "--yes", "--json", "--only", rows});
  auto left = fixture::parsedJson(out.str())["findings"];
  run({"scan", "--json", "--only", rows});
  auto found = fixture::parsedJson(out.str())["findings"];
  for (auto* list : {&left, &found}) {
    for (auto& finding : *list) {
      for (const char* opinion : {"checked", "confidence", "reasons", "tested"}) {
        finding.erase(opinion);
      }
    }
  }
  EXPECT_EQ(found, left);
}

TEST_F(FixTest, TheSafetyExportBringsAllBack) {
  const std::string before = content();
  run({"fix", "--all", "--yes"});
  EXPECT_NE(content(), before);
  const fs::path exported = fs::directory_iterator(programFolder() / "backup" / "registry")->path();
  for (int turn = 1; turn <= 2; ++turn) {
    EXPECT_EQ(run({"undo", "restore-export", exported.string()}), nothingFound) << error.str();
    EXPECT_EQ(content(), before);
  }
}

TEST_F(FixTest, AKeyOfAllRecordsIsSparedAndNamed) {
  run({"fix", "--all", "--yes", "--only", "uninstall", "--kinds", "133"});
  EXPECT_NE(error.str().find(
                "left alone: it would have taken HKEY_LOCAL_MACHINE\\Software\\Microsoft\\windows\\"
                "currentversion\\Uninstall\\"),
            std::string::npos)
      << error.str();
  EXPECT_NE(content().find("NorthwindAtelier"), std::string::npos);
}

TEST_F(FixTest, TheFixModeNamesItAsWell) {
  EXPECT_EQ(run({"w4-c4"}), nothingFound);
  EXPECT_NE(error.str().find(
                "left alone: it would have taken HKEY_LOCAL_MACHINE\\Software\\Microsoft\\windows\\"
                "currentversion\\Uninstall\\"),
            std::string::npos)
      << error.str();
  EXPECT_NE(error.str().find("(fix --no-protect takes it)"), std::string::npos) << error.str();
  EXPECT_NE(content().find("NorthwindAtelier"), std::string::npos);
}

TEST_F(FixTest, WithoutProtectionTheWholeListGoes) {
  run({"fix", "--all", "--yes", "--only", "uninstall", "--kinds", "133", "--no-protect"});
  EXPECT_EQ(content().find("NorthwindAtelier"), std::string::npos);
}

TEST_F(FixTest, WithoutAnAnswerNothingIsRepaired) {
  const std::string before = content();
  EXPECT_EQ(run({"fix", "--all"}), problemsFound);
  EXPECT_EQ(content(), before);
}

TEST_F(FixTest, WithoutASafetyExportNothingIsRepaired) {
  const std::string before = content();
  std::ofstream(programFolder() / "backup") << "a file in the folder's place";
  EXPECT_EQ(run({"fix", "--all", "--yes"}), failed);
  EXPECT_NE(error.str().find("Nothing was repaired"), std::string::npos) << error.str();
  EXPECT_EQ(content(), before);
  EXPECT_EQ(run({"w4-c4"}), nothingFound);
  EXPECT_EQ(error.str(), "");
  EXPECT_EQ(content(), before);
  EXPECT_TRUE(fs::exists(programFolder() / "regst.txt"));
  EXPECT_NE(run({"fix", "--all", "--yes", "--no-backup"}), failed);
  EXPECT_NE(content(), before);
}

TEST_F(FixTest, WithNothingFoundNothingIsWritten) {
  run({"fix", "--all", "--yes", "--only", "fonts"});
  fs::remove_all(programFolder() / "backup");
  const auto written = fs::last_write_time(copy.path() / "registry.reg");
  EXPECT_EQ(run({"fix", "--all", "--yes", "--only", "fonts"}), nothingFound);
  EXPECT_FALSE(fs::exists(programFolder() / "backup"));
  EXPECT_EQ(fs::last_write_time(copy.path() / "registry.reg"), written);
}

TEST_F(FixTest, ARepairIsListedUndoneFromItsExportAndRemoved) {
  const std::string before = content();
  run({"undo", "on"});
  run({"fix", "--all", "--yes"});
  EXPECT_NE(content(), before);
  EXPECT_EQ(run({"undo", "list"}), nothingFound);
  // The copy of the fix list comes before the journal, and is not offered.
  EXPECT_NE(out.str().find("  1  "), std::string::npos) << out.str();
  EXPECT_EQ(out.str().find("  2  "), std::string::npos) << out.str();
  EXPECT_NE(out.str().find("all, from its safety export"), std::string::npos) << out.str();
  for (int turn = 1; turn <= 2; ++turn) {
    EXPECT_EQ(run({"undo", "restore", "1"}), nothingFound);
    EXPECT_NE(error.str().find("Finished Retriving undo data"), std::string::npos);
    EXPECT_EQ(content(), before);
  }
  EXPECT_EQ(run({"undo", "remove", "1"}), nothingFound);
  run({"undo", "list"});
  EXPECT_EQ(out.str().find("  1  "), std::string::npos) << out.str();
  EXPECT_THROW(run({"undo", "restore", "1"}), std::runtime_error);
}

TEST_F(FixTest, TheJournalIsTheSecondChoice) {
  const std::string before = content();
  run({"undo", "on"});
  run({"fix", "--all", "--yes", "--only", "fonts"});
  run({"undo", "list", "--journal"});
  EXPECT_NE(out.str().find(" rows, from its journal"), std::string::npos) << out.str();
  EXPECT_EQ(run({"undo", "restore", "1", "--journal"}), nothingFound);
  EXPECT_NE(content(), before);
  fs::remove_all(programFolder() / "backup");
  run({"undo", "list"});
  EXPECT_EQ(out.str().find("safety export"), std::string::npos) << out.str();
}

TEST_F(FixTest, AnExportThatOthersCouldHaveWrittenIsRefused) {
  run({"undo", "on"});
  run({"fix", "--all", "--yes", "--only", "fonts"});
  const std::string after = content();
  const fs::path exported = fs::directory_iterator(programFolder() / "backup" / "registry")->path();
  for (const fs::path& open : {exported, exported.parent_path()}) {
    const fs::perms perms = fs::status(open).permissions();
    EXPECT_EQ(perms & (fs::perms::group_all | fs::perms::others_all), fs::perms::none);
    for (const fs::perms others : {fs::perms::group_write, fs::perms::others_write}) {
      fs::permissions(open, perms | others);
      EXPECT_THROW(run({"undo", "restore-export", exported.string()}), std::runtime_error);
      fs::permissions(open, perms);
    }
  }
  EXPECT_THROW(run({"undo", "restore-export", exported.parent_path().string()}),
               std::runtime_error);
  const std::string name = exported.filename().string();
  const std::string path = "C:\\Program Files (x86)\\zelvreg\\backup\\registry";
  const std::string lists = copy.read("security.txt");
  for (const std::string& open : {path, path + "\\" + name}) {
    for (const char* list : {"D:(A;;FA;;;BA)(A;;FW;;;BU)", "O:BUD:(A;;FA;;;BA)"}) {
      copy.write("security.txt", lists + open + "\t" + list + "\n");
      EXPECT_EQ(run({"undo", "restore", "1"}), failed);
      EXPECT_NE(error.str().find("Nothing was restored: "), std::string::npos) << error.str();
      run({"undo", "list"});
      EXPECT_NE(out.str().find("others could have written its safety export"), std::string::npos);
    }
  }
  EXPECT_EQ(content(), after);
  copy.write("security.txt", lists);
  EXPECT_EQ(run({"undo", "restore-export", exported.string()}), nothingFound);
  EXPECT_NE(content(), after);
}

TEST_F(FixTest, WithoutTheJournalThatWasAskedForNothingIsRepaired) {
  run({"undo", "on"});
  const std::string before = content();
  // Its name is the time, and the clock stands still.
  copy.write("machine.ini", copy.read("machine.ini") + "\nnow=2026-01-31T13:45:06\n");
  fs::create_directory(programFolder() / "31.01.2026 t 13.45.06.txt");
  EXPECT_EQ(run({"fix", "--all", "--yes"}), failed);
  EXPECT_NE(error.str().find("Nothing was repaired: the undo journal"), std::string::npos)
      << error.str();
  EXPECT_EQ(content(), before);
  EXPECT_TRUE(fs::is_empty(programFolder() / "backup" / "registry"));
  EXPECT_NE(run({"fix", "--all", "--yes", "--no-backup"}), failed);
  EXPECT_NE(content(), before);
}

TEST_F(FixTest, AnExclusionTakesItsFindingsOutOfScanAndFix) {
  run({"exclude", "add", "HKEY_CURRENT_USER\\Software\\Classes\\Local"});
  run({"exclude", "list"});
  EXPECT_NE(out.str().find("HKEY_CURRENT_USER\\Software\\Classes\\Local"), std::string::npos);
  EXPECT_EQ(run({"scan", "--only", "mui-cache"}), nothingFound);
  run({"exclude", "remove", "1", "--yes"});
  EXPECT_EQ(run({"scan", "--only", "mui-cache"}), problemsFound);
}

TEST_F(FixTest, AnExclusionWithoutEffectIsAFailure) {
  const fs::path file = programFolder() / "exregscan.txt";
  for (const char* entry : {"", "  ", "1234567"}) {
    fs::remove(file);
    EXPECT_THROW(run({"exclude", "add", entry}), std::runtime_error) << entry;
  }
  EXPECT_EQ(run({"exclude", "add", "now there is room"}), nothingFound);
  EXPECT_EQ(run({"exclude", "add", "1234567"}), nothingFound);
  fs::remove(file);
  fs::create_directory(file);
  EXPECT_THROW(run({"exclude", "add", "HKEY_CURRENT_USER\\Software"}), std::runtime_error);
}

TEST_F(FixTest, TheListModeLeavesItsFilesAndTheFixModeRepairs) {
  EXPECT_EQ(run({"w4"}), nothingFound);
  EXPECT_TRUE(fs::exists(programFolder() / "regtmp.txt"));
  EXPECT_TRUE(fs::exists(programFolder() / "regst.txt"));
  EXPECT_EQ(run({"w4-c4"}), nothingFound);
  EXPECT_EQ(run({"scan", "--only", "fonts"}), nothingFound);
  EXPECT_THROW(run({"d"}), UsageError);
}

TEST_F(FixTest, TheReportGoesToAFileOfTheHost) {
  const fs::path report = copy.path() / "report.txt";
  run({"scan", "--only", "fonts", "--report", report.string()});
  EXPECT_GT(fs::file_size(report), 100U);
  const std::string plain = copy.read("report.txt");
  run({"scan", "--only", "fonts", "--report", report.string(), "--report-evidence"});
  const std::string whole = copy.read("report.txt");
  // Only the time may differ.
  const std::size_t firstLine = plain.find('\n');
  EXPECT_EQ(whole.substr(firstLine, plain.size() - firstLine), plain.substr(firstLine));
  EXPECT_NE(whole.find("\r\n3  |  Unnamed Face (TrueType)  |  "), std::string::npos) << whole;
  EXPECT_THROW(run({"scan", "--report", (copy.path() / "none" / "report.txt").string()}),
               std::runtime_error);
}

}  // namespace
}  // namespace zelvreg::console
