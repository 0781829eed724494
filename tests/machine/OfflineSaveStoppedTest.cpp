// A save of several hives that is stopped, or disturbed by another program, at each of its system
// calls.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "machine/DirtyDisk.h"
#include "machine/KilledProcess.h"
#include "machine/OfflineDiskFixture.h"
#include "machine/OrdinaryUser.h"
#include "machine/base/MachineError.h"
#include "machine/offline/HiveSaving.h"

namespace zelvreg::fixture {
namespace {

constexpr const char* noteName = "zelvreg-saving.txt";
constexpr int mostCalls = 4000;

// Where a disk is brought up to date a thousand times without waiting for one.
std::filesystem::path folderInMemory() {
  const std::filesystem::path memory = "/dev/shm";
  std::error_code error;
  return std::filesystem::is_directory(memory, error) ? memory
                                                      : std::filesystem::temp_directory_path();
}

// A save of three hives: two were not shut down cleanly, and one has a backup from before.
class OfflineSaveStoppedTest : public OfflineDiskTest {
 protected:
  OfflineSaveStoppedTest() : OfflineDiskTest(folderInMemory()) {}

  void SetUp() override {
    hive(software).text(R"(Vendor\Product)", "x", "old");
    disk.write(firstBackup, "the first");
    for (const char* name : {system, anna}) {
      hive(name).text("A", "x", "old");
      const std::string before = disk.read(name);
      hive(name).text("A", "x", "in the logs");
      makeDirty(disk, name, before, disk.read(name));
    }
    old = allFiles();
    open();
    changeAll();
    computer->save();
    for (const char* name : hives) {
      written[name] = disk.read(name);
    }
    computer.reset();
    restore();
  }

  void changeAll() {
    registry().erase(key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor\Product)"));
    registry().makeChild(key(R"(HKEY_LOCAL_MACHINE\SYSTEM\A)"), u"B");
    registry().erase(key(R"(HKEY_CURRENT_USER\A)"));
  }

  void restore() const {
    std::filesystem::remove_all(disk.path());
    for (const auto& [name, bytes] : old) {
      disk.write(name, bytes);
    }
  }

  // Whether the hive is the one before the save.
  [[nodiscard]] bool isOld(const std::string& name) const {
    const std::string now = disk.read(name);
    EXPECT_TRUE(now == old.at(name) || now == written.at(name)) << name;
    return now == old.at(name);
  }
  [[nodiscard]] std::ptrdiff_t oldOnes() const {
    return std::ranges::count_if(hives, [this](const char* name) { return isOld(name); });
  }
  // Some are old and others new.
  [[nodiscard]] bool isMixed() const {
    const std::ptrdiff_t count = oldOnes();
    return count != 0 && count != std::ssize(hives);
  }

  // After the next command all are old or all new, and nothing is left that was not there but
  // backups. Which of these it is.
  std::string howItEnded() {
    const bool wasMixed = isMixed();
    const bool hadNote = disk.has(noteName);
    EXPECT_TRUE(!wasMixed || hadNote);
    open();
    EXPECT_FALSE(isMixed());
    const bool isAllOld = isOld(software);
    // A hive that was not shut down cleanly is so until it is written.
    EXPECT_EQ(computer->notices().size(), (hadNote ? 1U : 0U) + (isAllOld ? 2U : 0U));
    EXPECT_TRUE(computer->damagedHives().empty());
    bool isFirstThere = false;
    for (const auto& [name, bytes] : allFiles()) {
      const std::string plain = name.substr(0, name.find(".bak"));
      const bool isFirst = plain != name && bytes == old.at(firstBackup);
      EXPECT_TRUE(old.contains(plain)) << name << " is left";
      EXPECT_TRUE(name == plain || isFirst || bytes == old.at(plain)) << name;
      isFirstThere = isFirstThere || isFirst;
    }
    EXPECT_TRUE(isFirstThere);
    EXPECT_TRUE(isAllOld || disk.read(software + std::string(".bak")) == old.at(software));
    if (hadNote) {
      // A second name of a hive that stayed would be no backup of it.
      EXPECT_EQ(std::filesystem::hard_link_count(disk.path() / software), 1U);
    }
    computer.reset();
    return wasMixed ? "mixed" : isAllOld ? "old" : "new";
  }

  // Stops a save at the n-th of its system calls; whether it had ended before.
  bool stopAt(int call) {
    const bool isDone = endsBeforeCall(
        call, [this] { open(); },
        [this] {
          changeAll();
          computer->save();
        });
    waitUntilFree();
    return isDone;
  }

  // A process that writes a hive for another goes with it, and the disk is in use until then.
  void waitUntilFree() const {
    const machine::FileDescriptor root(::open(disk.path().c_str(), O_RDONLY | O_DIRECTORY));
    EXPECT_EQ(flock(root.get(), LOCK_EX), 0);
  }

  // Puts another file in a hive's place at each system call of a save: it must still be there, in
  // one place or another, and the other hives must be old where the save was refused.
  void disturbAtEachCall(const char* hive) {
    const std::string foreign = "written by another program";
    int call = 0;
    bool isDone = false;
    bool wasRefused = false;
    int refusals = 0;
    for (; !isDone && call < mostCalls; ++call) {
      restore();
      disk.write("foreign", foreign);
      isDone = endsAfterCall(
          call, [this] { open(); },
          [this] {
            changeAll();
            computer->save();
          },
          [&] { std::filesystem::rename(disk.path() / "foreign", disk.path() / hive); },
          wasRefused);
      const auto files = allFiles();
      ASSERT_TRUE(
          std::ranges::any_of(files, [&](const auto& file) { return file.second == foreign; }))
          << "call " << call;
      for (const char* other : hives) {
        ASSERT_TRUE(!wasRefused || other == hive || files.at(other) == old.at(other))
            << "call " << call;
      }
      ASSERT_FALSE(disk.has(noteName)) << "call " << call;
      refusals += wasRefused ? 1 : 0;
    }
    EXPECT_LT(call, mostCalls);
    EXPECT_GT(refusals, 0);
  }

  // In the order in which they are written.
  static constexpr std::array hives{software, system, anna};
  static constexpr const char* firstBackup = "Windows/System32/config/SOFTWARE.bak";
  std::map<std::string, std::string> old;
  std::map<std::string, std::string> written;
};

TEST_F(OfflineSaveStoppedTest, ThatIsKilledAnywhereLeavesEachHiveOldOrNewAndTheNextCommandAll) {
  if (!canBeTraced) {
    GTEST_SKIP() << "a process under this sanitizer cannot be traced";
  }
  std::set<std::string> outcomes;
  int call = 0;
  for (bool isDone = false; !isDone && call < mostCalls; ++call) {
    restore();
    SCOPED_TRACE(call);
    isDone = stopAt(call);
    outcomes.insert(howItEnded());
    ASSERT_FALSE(HasFailure());
  }
  EXPECT_LT(call, mostCalls);
  EXPECT_EQ(outcomes, (std::set<std::string>{"mixed", "new", "old"}));
}

TEST_F(OfflineSaveStoppedTest, WhatAnotherProgramPutsThereAnywhereIsNotLost) {
  if (!canBeTraced) {
    GTEST_SKIP() << "a process under this sanitizer cannot be traced";
  }
  // The first hive that is written, and those after another, which must then be put back.
  for (const char* hive : hives) {
    disturbAtEachCall(hive);
  }
}

#ifdef __x86_64__
TEST_F(OfflineSaveStoppedTest, ACallThatFailsAnywhereLeavesAllOldOrTheNextCommandAllNew) {
  if (!canBeTraced) {
    GTEST_SKIP() << "a process under this sanitizer cannot be traced";
  }
  for (const int error : {EIO, EINVAL}) {
    std::set<std::string> refused;
    std::set<std::string> saved;
    CallFailure failure = CallFailure::Done;
    for (int call = 0; call < mostCalls && failure != CallFailure::NoSuchCall; ++call) {
      SCOPED_TRACE(std::to_string(error) + " at " + std::to_string(call));
      restore();
      bool wasRefused = false;
      failure = failCall(
          call, error, [this] { open(); },
          [this] {
            changeAll();
            computer->save();
          },
          wasRefused);
      if (failure == CallFailure::Done) {
        (wasRefused ? refused : saved).insert(howItEnded());
        ASSERT_FALSE(HasFailure());
      }
    }
    EXPECT_EQ(failure, CallFailure::NoSuchCall);
    EXPECT_TRUE(refused.contains("old"));
    EXPECT_EQ(saved, std::set<std::string>{"new"});
  }
}
#endif

TEST_F(OfflineSaveStoppedTest, AHiveThatCannotBeReplacedLeavesAllAsTheyWere) {
  open();
  changeAll();
  // The folder stands where the backup must go.
  disk.makeFolder(system + std::string(".bak"));
  EXPECT_NE(refusal().find("SYSTEM.bak cannot be written"), std::string::npos);
  EXPECT_TRUE(allFiles() == old);
}

TEST_F(OfflineSaveStoppedTest, AHiveThatAnotherProgramLocksIsNotWritten) {
  open();
  changeAll();
  const machine::FileDescriptor other = machine::openPlainFile(disk.path() / system);
  ASSERT_EQ(flock(other.get(), LOCK_EX), 0);
  EXPECT_NE(refusal().find("is locked by another program"), std::string::npos);
  EXPECT_TRUE(allFiles() == old);
}

// Leaves a disk on which the first of two hives is new, as a killed process does.
class HalfSavedTest : public OfflineSaveStoppedTest {
 protected:
  void SetUp() override {
    OfflineSaveStoppedTest::SetUp();
    if (!canBeTraced) {
      GTEST_SKIP() << "a process under this sanitizer cannot be traced";
    }
    for (int call = 0; call < mostCalls && !isMixed(); ++call) {
      restore();
      stopAt(call);
    }
    ASSERT_TRUE(isMixed());
    oldOne = *std::ranges::find_if(hives, [this](const char* name) { return isOld(name); });
  }

  const char* oldOne = nullptr;
};

TEST_F(HalfSavedTest, IsLeftAloneWhereAHiveWasWrittenSince) {
  disk.write(oldOne, old.at(oldOne) + "more");
  const auto before = allFiles();
  const machine::InterruptedSave save = machine::finishSavingHives(disk.path());
  ASSERT_EQ(save.notices.size(), 1U);
  EXPECT_NE(save.notices[0].find("not as it left them"), std::string::npos) << save.notices[0];
  EXPECT_NE(save.notices[0].find(oldOne), std::string::npos);
  for (const char* name : hives) {
    EXPECT_TRUE(disk.read(name) == before.at(name));
  }
  EXPECT_FALSE(disk.has(noteName));
}

TEST_F(HalfSavedTest, IsNamedAsDamageWhereTheDiskCannotBeWritten) {
  for (const char* folder : {"", "Windows/System32/config", "Users/Anna"}) {
    chmod((disk.path() / folder).c_str(), 0555);
  }
  {
    const OrdinaryUser user;
    open();
    ASSERT_EQ(computer->damagedHives().size(), 1U);
    EXPECT_NE(computer->damagedHives()[0].find("mount the disk so that it can be written"),
              std::string::npos);
    computer.reset();
  }
  for (const char* folder : {"", "Windows/System32/config", "Users/Anna"}) {
    chmod((disk.path() / folder).c_str(), 0755);
  }
  open();
  EXPECT_TRUE(computer->damagedHives().empty());
  EXPECT_EQ(oldOnes(), 0);
}

TEST_F(HalfSavedTest, ANoteThatNamesAnythingElseIsRefused) {
  const std::string note = disk.read(noteName);
  const std::size_t name = note.find(oldOne);
  ASSERT_NE(name, std::string::npos);
  for (const std::string& other :
       {std::string("../outside"), std::string("/etc/passwd"), std::string("Windows/System32"),
        std::string("Windows/none"), oldOne + std::string("\0x", 2)}) {
    std::string changed = note;
    disk.write(noteName, changed.replace(name, std::string_view(oldOne).size(), other));
    EXPECT_THROW(machine::finishSavingHives(disk.path()), machine::MachineError) << other;
  }
  disk.write(noteName, "anything");
  EXPECT_THROW(machine::finishSavingHives(disk.path()), machine::MachineError);
  EXPECT_TRUE(isMixed());
}

}  // namespace
}  // namespace zelvreg::fixture
