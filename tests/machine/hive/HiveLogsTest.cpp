// What becomes of the logs of a hive when it is opened, and what is said of them.
#include "machine/hive/HiveLogs.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <stdexcept>

#include "machine/DirtyDisk.h"
#include "machine/KilledProcess.h"
#include "machine/OrdinaryUser.h"
#include "machine/base/MachineError.h"
#include "machine/hive/RawHive.h"

namespace zelvreg::fixture {
namespace {

using namespace std::string_literals;
using machine::HiveFile;
using machine::HiveState;
using machine::LogUse;

constexpr const char* name = "SYSTEM";

// A hive with these subkeys of its root.
RawHive hiveWith(const std::vector<std::string>& keys) {
  RawHive hive(machine::hiveFormat::pageSize);
  hive.giveSubkeys(hive.root(), "lh", keys);
  return hive;
}

class HiveLogsTest : public ::testing::Test {
 protected:
  HiveLogsTest() {
    before = hiveWith({"one"}).file();
    after = hiveWith({"one", "two"}).file();
    makeDirty(folder, name, before, after);
  }

  [[nodiscard]] std::filesystem::path file() const { return folder.path() / name; }

  // The number of subkeys of the root.
  static std::size_t keysOf(HiveFile& hive) {
    std::size_t keys = 0;
    hive.content().subkeys(hive.root(), {}, [&keys](const machine::HiveSubkey&) { ++keys; });
    return keys;
  }
  void isRead(HiveState state, std::size_t keys, LogUse use = LogUse::Replay) const {
    HiveFile hive(file(), use);
    EXPECT_EQ(hive.replay().state, state) << hive.replay().why;
    EXPECT_EQ(keysOf(hive), keys);
  }
  // Why it is not written; the empty text if it would be.
  [[nodiscard]] std::string refusal(LogUse use = LogUse::Replay) const {
    return whyUnclean(HiveFile(file(), use)).value_or("");
  }
  [[nodiscard]] std::string notice(LogUse use = LogUse::Replay) const {
    return logNotice(HiveFile(file(), use)).value_or("");
  }
  void rename(const char* log, const char* other) const {
    std::filesystem::rename(folder.path() / log, folder.path() / other);
  }

  TemporaryFolder folder;
  std::string before;
  std::string after;
};

TEST_F(HiveLogsTest, AreTakenOverByAHiveThatNeedsThem) {
  isRead(HiveState::Replayed, 2);
  EXPECT_EQ(notice(), file().string() +
                          ": was not shut down cleanly; 1 entry with 1 page of its logs were "
                          "taken over");
  EXPECT_EQ(refusal(), "");
  const HiveFile hive(file());
  EXPECT_FALSE(isBehindItsLogs(hive));
  EXPECT_EQ(whyNotWhole(hive), "");
  EXPECT_EQ(codeOf(hive.replay().state), "replayed"s);
}

TEST_F(HiveLogsTest, OfAHiveThatWasShutDownCleanlyMeanNothing) {
  folder.write(name, before);
  isRead(HiveState::Clean, 1);
  EXPECT_EQ(notice(), "");
  EXPECT_EQ(refusal(), "");
  std::filesystem::remove(folder.path() / "SYSTEM.LOG2");
  ASSERT_EQ(mkfifo((folder.path() / "SYSTEM.LOG2").c_str(), 0600), 0);
  isRead(HiveState::Clean, 1);
}

TEST_F(HiveLogsTest, AreFoundInAnyCaseOfLetters) {
  rename("SYSTEM.LOG1", "system.Log2");
  isRead(HiveState::Replayed, 2);
  rename("system.Log2", "System.log");
  isRead(HiveState::Replayed, 2);
  rename("System.log", "SYSTEM.LOG3");
  isRead(HiveState::Unreplayable, 1);
}

TEST_F(HiveLogsTest, AreNotWrittenAndNorIsTheHive) {
  const std::string hive = folder.read(name);
  const std::string log = folder.read("SYSTEM.LOG1");
  isRead(HiveState::Replayed, 2);
  EXPECT_TRUE(folder.read(name) == hive);
  EXPECT_TRUE(folder.read("SYSTEM.LOG1") == log);
}

TEST_F(HiveLogsTest, ThatCannotBeTakenOverLeaveTheHiveAsItIs) {
  folder.write("SYSTEM.LOG1", "");
  isRead(HiveState::Unreplayable, 1);
  EXPECT_EQ(notice(), file().string() +
                          ": was not shut down cleanly; its logs cannot be taken over: none of "
                          "them is whole; it is read without them");
  EXPECT_NE(refusal().find("none of them is whole; start that Windows once and shut it down"),
            std::string::npos)
      << refusal();
  EXPECT_TRUE(isBehindItsLogs(HiveFile(file())));
}

// One that was left out would take the newest entries with it.
TEST_F(HiveLogsTest, AreTakenOverHoweverLongTheyAre) {
  std::filesystem::resize_file(folder.path() / "SYSTEM.LOG1", std::uintmax_t{1} << 32);
  isRead(HiveState::Replayed, 2);
}

TEST_F(HiveLogsTest, ThatAreNoFilesAreNamedAndNobodyWaits) {
  std::filesystem::remove(folder.path() / "SYSTEM.LOG2");
  ASSERT_EQ(mkfifo((folder.path() / "SYSTEM.LOG2").c_str(), 0600), 0);
  isRead(HiveState::Unreplayable, 1);
  EXPECT_NE(refusal().find("SYSTEM.LOG2 is no file that can be read"), std::string::npos);
}

TEST_F(HiveLogsTest, ThatAreLinksAreNotFollowed) {
  rename("SYSTEM.LOG1", "elsewhere");
  std::filesystem::create_symlink(folder.path() / "elsewhere", folder.path() / "SYSTEM.LOG1");
  isRead(HiveState::Unreplayable, 1);
}

TEST_F(HiveLogsTest, ThatAFolderDoesNotShowAreNotTakenForNone) {
  chmod(folder.path().c_str(), 0311);
  chmod(file().c_str(), 0644);
  {
    const OrdinaryUser user;
    isRead(HiveState::Unreplayable, 1);
    EXPECT_NE(refusal().find(folder.path().string() + " cannot be read: Permission denied"),
              std::string::npos)
        << refusal();
  }
  chmod(folder.path().c_str(), 0700);
}

#ifdef __x86_64__
TEST_F(HiveLogsTest, ThatCannotBeReadAreNeverLeftOutInSilence) {
  if (!canBeTraced) {
    GTEST_SKIP() << "a process under this sanitizer cannot be traced";
  }
  const auto look = [this] {
    try {
      HiveFile hive(file());
      const bool isWhole = hive.replay().state == HiveState::Replayed && keysOf(hive) == 2;
      if (isWhole || hive.replay().state == HiveState::Unreplayable) {
        return;
      }
    } catch (const machine::MachineError&) {
      return;
    }
    throw std::runtime_error("it seems to be whole");
  };
  const int failures =
      failEachCall(EIO, look, [](int call, bool seemsWhole) { EXPECT_FALSE(seemsWhole) << call; });
  EXPECT_GT(failures, 10);
}
#endif

TEST_F(HiveLogsTest, CanBeLeftAloneAndThenTheHiveIsNotWritten) {
  isRead(HiveState::LeftAsIs, 1, LogUse::LeaveAlone);
  EXPECT_NE(notice(LogUse::LeaveAlone).find("left alone, as --as-is asks for; it is read without"),
            std::string::npos);
  EXPECT_NE(refusal(LogUse::LeaveAlone).find("leave --as-is out"), std::string::npos);
  EXPECT_TRUE(isBehindItsLogs(HiveFile(file(), LogUse::LeaveAlone)));
  folder.write(name, before);
  EXPECT_EQ(refusal(LogUse::LeaveAlone), "");
}

TEST_F(HiveLogsTest, AreNeverTakenOverWhereWindowsIsAsleep) {
  isRead(HiveState::Hibernated, 1, LogUse::Hibernated);
  EXPECT_EQ(notice(LogUse::Hibernated), "");
  EXPECT_TRUE(isBehindItsLogs(HiveFile(file(), LogUse::Hibernated)));
  folder.write(name, before);
  isRead(HiveState::Hibernated, 1, LogUse::Hibernated);
}

TEST_F(HiveLogsTest, ThatLeadToAHiveWithoutARootKeyAreNotTakenOver) {
  RawHive hive = hiveWith({"one"});
  hive.bytes.write(hive.root() + 4, "xx");
  makeDirty(folder, name, before, hive.file());
  isRead(HiveState::Unreplayable, 1);
  EXPECT_NE(refusal().find("it has no root key"), std::string::npos);
}

TEST_F(HiveLogsTest, BringBackAHeaderThatIsDamaged) {
  std::string torn = folder.read(name);
  torn.replace(0, 100, 100, '\0');
  folder.write(name, torn);
  isRead(HiveState::Replayed, 2);
  std::filesystem::remove(folder.path() / "SYSTEM.LOG1");
  try {
    const HiveFile hive(file());
    ADD_FAILURE();
  } catch (const machine::MachineError& error) {
    EXPECT_NE(std::string(error.what()).find("its header is damaged, and its logs do not help"),
              std::string::npos)
        << error.what();
  }
}

TEST_F(HiveLogsTest, ThatSomebodyWritesLaterMakeItAnotherHive) {
  HiveFile hive(file());
  EXPECT_TRUE(hive.isAsOpened());
  folder.write("SYSTEM.LOG2", "more");
  EXPECT_FALSE(hive.isAsOpened());
  hive.noteReplaced();
  EXPECT_TRUE(hive.isAsOpened());
}

TEST_F(HiveLogsTest, GiveAFileWithAllThatCanBeReadWithoutThem) {
  HiveFile hive(file());
  folder.write("copy", "");
  std::filesystem::copy_file(hive.source(), folder.path() / "copy",
                             std::filesystem::copy_options::overwrite_existing);
  HiveFile copy(folder.path() / "copy");
  EXPECT_EQ(copy.replay().state, HiveState::Clean);
  EXPECT_EQ(keysOf(copy), 2U);
  // Once it is in the hive's place, that is the file.
  hive.noteReplaced();
  EXPECT_EQ(hive.source(), file());
}

class PendingTransactions : public HiveLogsTest {
 protected:
  PendingTransactions() {
    bench::putWord(after, 144, 1);
    bench::signBaseBlock(after);
    makeDirty(folder, name, before, after);
  }
};

TEST_F(PendingTransactions, AreThoseOfAHiveThatIsLockedByThem) {
  EXPECT_EQ(refusal(), "");
  folder.write("SYSTEM{1-2}.TMContainer1.regtrans-ms", "x");
  EXPECT_NE(refusal().find("transactions may wait in " + folder.path().string()),
            std::string::npos);
  EXPECT_NE(notice().find("transactions may wait in"), std::string::npos);
  isRead(HiveState::Replayed, 2);
  makeDirty(folder, name, before, hiveWith({"one", "two"}).file());
  EXPECT_EQ(refusal(), "");
}

TEST_F(PendingTransactions, AreNotThereWhereItWasShutDownCleanly) {
  folder.write("SYSTEM{1-2}.TMContainer1.regtrans-ms", "x");
  folder.write(name, after);
  EXPECT_EQ(refusal(), "");
}

TEST_F(PendingTransactions, AreNotThereInAFileOfZerosOrOfAnotherHive) {
  folder.write("SYSTEM{1-2}.TMContainer1.regtrans-ms", std::string(5000, '\0'));
  folder.write("SOFTWARE{1-2}.TMContainer1.regtrans-ms", "x");
  folder.write("SYSTEM{1-2}.TM.blf", "x");
  EXPECT_EQ(refusal(), "");
}

TEST_F(PendingTransactions, AreInTheFolderOfThoseOfTheMachine) {
  folder.write("txr/{1-2}.TxR.0.REGTRANS-MS", "x");
  EXPECT_NE(refusal().find("{1-2}.TxR.0.REGTRANS-MS"), std::string::npos);
}

TEST_F(PendingTransactions, AreInNoFileWithTheNameOfThatFolder) {
  folder.write("TxR", "x");
  isRead(HiveState::Replayed, 2);
  EXPECT_EQ(refusal(), "");
}

TEST_F(PendingTransactions, MayBeInAFolderThatCannotBeRead) {
  std::filesystem::create_directory(folder.path() / "TxR");
  EXPECT_EQ(refusal(), "");
  chmod((folder.path() / "TxR").c_str(), 0);
  chmod(folder.path().c_str(), 0755);
  chmod(file().c_str(), 0644);
  {
    const OrdinaryUser user;
    isRead(HiveState::Replayed, 2);
    EXPECT_NE(refusal().find("transactions may wait in " + folder.path().string() + "/TxR;"),
              std::string::npos)
        << refusal();
  }
  chmod((folder.path() / "TxR").c_str(), 0700);
}

TEST_F(PendingTransactions, MayBeInWhatCannotBeLookedAt) {
  ASSERT_EQ(mkfifo((folder.path() / "SYSTEM{1-2}.regtrans-ms").c_str(), 0600), 0);
  EXPECT_NE(refusal().find("SYSTEM{1-2}.regtrans-ms"), std::string::npos);
  std::filesystem::remove(folder.path() / "SYSTEM{1-2}.regtrans-ms");
  const TemporaryFolder elsewhere;
  std::filesystem::create_symlink(elsewhere.path(), folder.path() / "TXR");
  EXPECT_NE(refusal().find("/TXR;"), std::string::npos) << refusal();
}

}  // namespace
}  // namespace zelvreg::fixture
