// Disks that Windows did not shut down cleanly, from the command line on; the Windows program takes
// no disk.
#include <gtest/gtest.h>

#include <functional>

#include "console/CommandRun.h"
#include "machine/DirtyDisk.h"
#include "machine/OfflineDiskFixture.h"
#include "machine/RealDisk.h"
#include "machine/hive/HiveFile.h"
#include "machine/replay/OwnBytes.h"
#include "support/ParsedJson.h"

namespace zelvreg::console {
namespace {

using namespace std::string_literals;
using fixture::differences;

class DirtyDiskTest : public fixture::OfflineDiskTest {
 protected:
  // What a command ends with, and what it says on the error stream; 2 for one that throws.
  int run(std::vector<std::string> arguments) {
    CommandRun command;
    const int status = command.ended("--offline", disk.path().string(), std::move(arguments));
    said = command.error.str();
    printed = command.out.str();
    return status;
  }

  // The hives of the last result.
  [[nodiscard]] std::string hives() const { return fixture::parsedJson(printed)["hives"].dump(); }
  [[nodiscard]] std::string findings() const {
    return fixture::parsedJson(printed)["findings"].dump();
  }

  // What this hive holds once its logs are taken over.
  [[nodiscard]] fixture::HiveContent contentWithLogs(const std::string& name) const {
    const machine::HiveFile hive(disk.path() / name);
    EXPECT_EQ(hive.replay().state, machine::HiveState::Replayed);
    return fixture::contentOf(hive.source());
  }

  // Nothing but what a repair of this program leaves beside a hive.
  void isAsBefore(const std::string& name, const std::map<std::string, std::string>& files) const {
    EXPECT_TRUE(disk.read(name + ".bak") == files.at(name));
    for (const char* log : {".LOG1", ".LOG2"}) {
      EXPECT_TRUE(disk.read(name + log) == files.at(name + log));
    }
  }

  // Takes back the one repair that has been made.
  void undo() {
    std::string exported;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(disk.path())) {
      exported = entry.path().extension() == ".reg" ? entry.path().string() : exported;
    }
    EXPECT_EQ(run({"undo", "restore-export", exported}), nothingFound) << said;
  }

  // What differs, but for what the program notes for itself.
  static Lines changes(const fixture::HiveContent& before, const fixture::HiveContent& after) {
    Lines lines = differences(before, after);
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("+\\zelvane"); });
    return lines;
  }

  std::string said;
  std::string printed;
};

// A hive of fonts: "Gone" is in the file, "Later" in its logs only.
class MadeDirtyDisk : public DirtyDiskTest {
 protected:
  void SetUp() override {
    hive(anna).key("Software");
    build({"Gone"});
    const std::string before = disk.read(software);
    build({"Gone", "Later"});
    after = disk.read(software);
    fixture::makeDirty(disk, software, before, after);
  }

  void build(const std::vector<std::string>& names) const {
    fixture::HiveBuilder builder = hive(software);
    for (const std::string& name : names) {
      builder.text(fonts, name, "C:\\" + name + ".ttf");
    }
  }

  // A repair and whatever else writes ends with two and says why; no file is changed.
  void isNotWritten(const std::string& why, const std::vector<std::string>& options = {}) {
    const auto files = allFiles();
    const std::vector<std::vector<std::string>> commands{
        {"fix", "--all", "--yes", "--only", "fonts"},
        {"fix", "--all", "--dry-run", "--only", "fonts"},
        {"undo", "restore", "1"},
        {"undo", "remove", "1"},
        {"undo", "restore-export", "none.reg"},
        {"undo", "on"},
        {"undo", "off"},
        {"exclude", "add", R"(HKEY_LOCAL_MACHINE\Software)"},
        {"exclude", "remove", "1"},
        {"languages", "use", "en"},
        {"w4-c4"}};
    for (std::vector<std::string> command : commands) {
      command.insert(command.end(), options.begin(), options.end());
      EXPECT_EQ(run(command), failed) << command.front();
      EXPECT_NE(said.find(why), std::string::npos) << command.front() << ": " << said;
      EXPECT_NE(said.find("or only scan this disk; nothing was "), std::string::npos) << said;
    }
    EXPECT_TRUE(allFiles() == files);
  }

  static constexpr const char* fonts = R"(Microsoft\Windows NT\CurrentVersion\Fonts)";
  std::string after;
};

TEST_F(MadeDirtyDisk, IsScannedWithItsLogsAndNotWritten) {
  const auto files = allFiles();
  EXPECT_EQ(run({"scan", "--only", "fonts", "--json"}), problemsFound);
  EXPECT_NE(findings().find("Later"), std::string::npos);
  EXPECT_EQ(findings().find("logs-not-replayed"), std::string::npos);
  const std::string path = (disk.path() / software).string();
  EXPECT_NE(said.find(path + ": was not shut down cleanly; 1 entry with 1 page"), std::string::npos)
      << said;
  EXPECT_EQ(hives(), R"([{"entries":1,"file":")" + path +
                         R"(","pages":1,"state":"replayed","why":""},)" +
                         R"({"entries":0,"file":")" + (disk.path() / anna).string() +
                         R"(","pages":0,"state":"clean","why":""}])");
  EXPECT_TRUE(allFiles() == files);
}

TEST_F(MadeDirtyDisk, CanBeScannedAsItIs) {
  EXPECT_EQ(run({"scan", "--only", "fonts", "--json", "--as-is"}), problemsFound);
  EXPECT_EQ(findings().find("Later"), std::string::npos);
  EXPECT_NE(findings().find("logs-not-replayed"), std::string::npos);
  EXPECT_NE(hives().find(R"("state":"as-is","why":"its logs were left alone)"), std::string::npos)
      << hives();
  isNotWritten("leave --as-is out", {"--as-is"});
}

TEST_F(MadeDirtyDisk, IsSearchedWithItsLogs) {
  EXPECT_EQ(run({"search", "Later", "--values", "--json"}), problemsFound);
  EXPECT_NE(hives().find("replayed"), std::string::npos);
  EXPECT_EQ(run({"search", "Later", "--values", "--json", "--as-is"}), nothingFound);
}

TEST_F(MadeDirtyDisk, IsRepairedWithItsLogsAndUndone) {
  const auto files = allFiles();
  const fixture::HiveContent whole = contentWithLogs(software);
  EXPECT_EQ(run({"fix", "--all", "--yes", "--only", "fonts", "--json"}), nothingFound) << said;
  EXPECT_NE(hives().find("replayed"), std::string::npos);
  const std::string key = "\\"s + fonts;
  EXPECT_EQ(changes(whole, content(software)), (Lines{"-" + key + "|Gone", "-" + key + "|Later"}));
  isAsBefore(software, files);

  EXPECT_EQ(run({"scan", "--only", "fonts", "--json"}), nothingFound) << said;
  EXPECT_EQ(said, "");
  EXPECT_EQ(hives().find("replayed"), std::string::npos);
  undo();
  EXPECT_EQ(changes(whole, content(software)), Lines{});
}

TEST_F(MadeDirtyDisk, IsOlderNowhereThanItsLogsAfterARepair) {
  EXPECT_EQ(run({"fix", "--all", "--yes", "--only", "fonts"}), nothingFound);
  const std::string header = disk.read(software).substr(0, 4096);
  EXPECT_EQ(bench::wordAt(header, 4), bench::wordAt(header, 8));
  EXPECT_GT(bench::wordAt(header, 8), fixture::stoppedAt);
  std::string sealed = header;
  bench::signBaseBlock(sealed);
  EXPECT_TRUE(sealed == header);
}

// Windows may be stopped again before it has begun new logs, or lose the header of the hive.
TEST_F(MadeDirtyDisk, TakesNoLogOverAgainAfterARepair) {
  const auto whyAfterARepair = [this](bool isHeaderLost) {
    EXPECT_EQ(run({"fix", "--all", "--yes", "--only", "fonts"}), nothingFound) << said;
    std::string hive = disk.read(software);
    const std::uint32_t sequence = bench::wordAt(hive, 8);
    bench::setSequences(hive, sequence + 1, sequence);
    hive[100] = static_cast<char>(hive[100] ^ (isHeaderLost ? 1 : 0));
    const std::vector<std::string> logs{disk.read(software + ".LOG1"s)};
    return fixture::replay(hive, logs).outcome.why;
  };
  const std::string before = disk.read(software);
  EXPECT_EQ(whyAfterARepair(false), "they hold nothing newer");
  for (const bool isHeaderLost : {false, true}) {
    disk.write(software, before);
    disk.write(software + ".LOG1"s,
               bench::bitmapLogBytes(after, bench::changedPages(before, after, 512),
                                     {fixture::stoppedAt + 1, 1, 1}));
    EXPECT_EQ(whyAfterARepair(isHeaderLost), "none of them is whole and as old as the hive");
  }
}

TEST_F(MadeDirtyDisk, IsNotWrittenIfItsLogsCannotBeTakenOver) {
  std::string log = disk.read(software + ".LOG1"s);
  log[600] = static_cast<char>(log[600] ^ 1);
  disk.write(software + ".LOG1"s, log);
  EXPECT_EQ(run({"scan", "--only", "fonts", "--json"}), problemsFound);
  EXPECT_EQ(findings().find("Later"), std::string::npos);
  EXPECT_NE(said.find("no entry in them is whole; it is read without them"), std::string::npos);
  EXPECT_NE(
      hives().find(R"("state":"unreplayable","why":"its logs cannot be taken over: no entry)"),
      std::string::npos)
      << hives();
  isNotWritten("start that Windows once and shut it down");
}

TEST_F(MadeDirtyDisk, IsNotWrittenIfTransactionsMayWait) {
  bench::putWord(after, 144, 1);
  bench::signBaseBlock(after);
  fixture::makeDirty(disk, software, disk.read(software), after);
  disk.write("Windows/System32/config/TxR/{1}.TxR.0.regtrans-ms", "x");
  EXPECT_EQ(run({"scan", "--only", "fonts", "--json"}), problemsFound);
  EXPECT_NE(hives().find(R"("state":"replayed","why":"transactions may wait in)"),
            std::string::npos);
  isNotWritten("transactions may wait in");
}

TEST_F(MadeDirtyDisk, WhoseWindowsIsAsleepIsReadWithoutItsLogs) {
  disk.write("hiberfil.sys", "hibr");
  EXPECT_EQ(run({"scan", "--only", "fonts", "--json"}), problemsFound);
  EXPECT_EQ(findings().find("Later"), std::string::npos);
  EXPECT_NE(findings().find("logs-not-replayed"), std::string::npos);
  EXPECT_EQ(hives().find("clean"), std::string::npos);
  EXPECT_NE(hives().find(R"("state":"hibernated","why":")"), std::string::npos) << hives();
}

// What was repaired in the computer's hives can be undone whatever the state of a user's.
TEST_F(MadeDirtyDisk, IsUndoneWhereAUsersLogsCannotBeTakenOver) {
  EXPECT_EQ(run({"fix", "--all", "--yes", "--only", "fonts"}), nothingFound) << said;
  constexpr std::size_t firstSequence = 4;
  makeUnclean(anna, firstSequence);
  undo();
  EXPECT_TRUE(content(software).contains("\\"s + fonts + "|Later"));
}

TEST_F(MadeDirtyDisk, WhoseLogsAreWrittenMeanwhileIsNotRepaired) {
  open();
  disk.write(software + ".LOG2"s, "more");
  registry().erase(key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft)"));
  EXPECT_NE(refusal().find("open the disk again"), std::string::npos);
}

TEST_F(MadeDirtyDisk, IsLeftAsItIsByARepairThatChangesNothing) {
  const auto files = allFiles();
  EXPECT_EQ(run({"fix", "--all", "--yes", "--only", "startup"}), nothingFound) << said;
  EXPECT_TRUE(allFiles() == files);
}

TEST_F(MadeDirtyDisk, CanBeSavedAgainAndAgain) {
  open();
  const std::string path = R"(HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft)";
  registry().makeChild(key(path), u"first");
  EXPECT_EQ(refusal(), "");
  registry().makeChild(key(path + R"(\first)"), u"second");
  EXPECT_EQ(refusal(), "");
  const fixture::HiveContent now = content(software);
  EXPECT_TRUE(now.contains(R"(\Microsoft\first\second)"));
  EXPECT_TRUE(now.contains("\\"s + fonts + "|Later"));
}

// Disks of real computers.
class RealDirtyDisk : public DirtyDiskTest {
 protected:
  void SetUp() override {
    if (!fixture::hasRealDisks()) {
      GTEST_SKIP() << "ZELVREG_REAL_HIVES names no folder with real hives";
    }
  }

  static std::size_t keysIn(const fixture::HiveContent& content) {
    return static_cast<std::size_t>(std::ranges::count_if(
        content, [](const auto& entry) { return entry.first.find('|') == std::string::npos; }));
  }

  // Whether a line is about something that was to be taken, or below it.
  static bool isOf(const nlohmann::json& takes, const std::string& line) {
    return std::ranges::any_of(takes, [&line](const std::string& path) {
      const std::string last = path.substr(path.find_last_of('\\') + 1);
      return line.find(last.substr(0, last.find(", value "))) != std::string::npos;
    });
  }

  // Scans, repairs all kinds that are given, and undoes it.
  void isRepairedAndUndone(const std::string& name, const std::string& kinds) {
    const auto files = allFiles();
    const fixture::HiveContent whole = contentWithLogs(name);
    ASSERT_EQ(run({"scan", "--json"}), problemsFound) << said;
    EXPECT_NE(hives().find("replayed"), std::string::npos);
    EXPECT_TRUE(allFiles() == files);
    EXPECT_NE(run({"fix", "--all", "--kinds", kinds, "--dry-run", "--json"}), failed) << said;
    const auto takes = fixture::parsedJson(printed)["dryRun"]["takes"];
    EXPECT_TRUE(allFiles() == files);
    EXPECT_NE(run({"fix", "--all", "--kinds", kinds, "--yes", "--json"}), failed) << said;
    EXPECT_GT(fixture::parsedJson(printed)["repaired"], 0);
    isAsBefore(name, files);
    const Lines lines = changes(whole, content(name));
    EXPECT_GE(lines.size(), takes.size());
    for (const std::string& line : lines) {
      EXPECT_EQ(line.front(), '-') << line;
      EXPECT_TRUE(isOf(takes, line)) << line;
    }
    EXPECT_NE(run({"scan", "--json"}), failed) << said;
    EXPECT_EQ(hives().find("replayed"), std::string::npos);
    undo();
    EXPECT_EQ(changes(whole, content(name)), Lines{});
  }
};

TEST_F(RealDirtyDisk, TheSystemsHiveIsRepairedWithItsLogsAndUndone) {
  fixture::copyRealDisk("dirty", disk.path());
  const machine::HiveFile hive(disk.path() / system);
  EXPECT_EQ(hive.replay().pages, 315U);
  EXPECT_EQ(keysIn(fixture::contentOf(disk.path() / system)), 33'123U);
  EXPECT_EQ(keysIn(contentWithLogs(system)), 35'595U);
  isRepairedAndUndone(system, "11");
}

TEST_F(RealDirtyDisk, AUsersHiveIsRepairedWithItsLogsAndUndone) {
  constexpr const char* ann = "Users/ann/NTUSER.DAT";
  fixture::copyRealDisk("dirty-user", disk.path());
  EXPECT_EQ(keysIn(fixture::contentOf(disk.path() / ann)), 2'590U);
  EXPECT_EQ(keysIn(contentWithLogs(ann)), 3'105U);
  isRepairedAndUndone(ann, "144,155,122,133,135,7,11");
}

}  // namespace
}  // namespace zelvreg::console
