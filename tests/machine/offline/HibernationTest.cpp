#include "machine/offline/Hibernation.h"

#include <sys/stat.h>

#include <cerrno>
#include <stdexcept>

#include "machine/KilledProcess.h"
#include "machine/OfflineDiskFixture.h"
#include "machine/OrdinaryUser.h"

namespace zelvreg::fixture {
namespace {

using namespace std::string_literals;

class HibernationTest : public OfflineDiskTest {
 protected:
  HibernationTest() {
    hive(software).text("Vendor", "x", "old");
    hive(anna).text("Software", "x", "old");
  }

  void sleep(const std::string& name, const std::string& start) const {
    disk.write(name, start + std::string(4096, '\0'));
  }

  // Why the disk may not be written; the empty text if it may.
  [[nodiscard]] std::string reason() const {
    return machine::whyAsleep({.root = disk.path(), .drives = {}, .user = {}}).value_or("");
  }
  [[nodiscard]] bool isHibernated() const {
    return reason().find("Windows is hibernated (") != std::string::npos;
  }
};

TEST_F(HibernationTest, TheStartOfTheFileTells) {
  EXPECT_FALSE(isHibernated());
  for (const char* start : {"HIBR", "hibr"}) {
    sleep("hiberfil.sys", start);
    EXPECT_TRUE(isHibernated()) << start;
  }
  for (const auto& start : {"wake"s, "WAKE"s, "RSTR"s, "\0\0\0\0"s, "HIB"s, "Hibr"s}) {
    sleep("hiberfil.sys", start);
    EXPECT_FALSE(isHibernated()) << start;
  }
  disk.write("hiberfil.sys", "");
  EXPECT_FALSE(isHibernated());
  disk.write("hiberfil.sys", "hibr");
  EXPECT_TRUE(isHibernated());
}

TEST_F(HibernationTest, ItsNameIsFoundInAnyCase) {
  sleep("HiberFil.SYS", "hibr");
  sleep("hiberfil.sys", "wake");
  EXPECT_TRUE(isHibernated());
}

TEST_F(HibernationTest, AFolderOfThatNameIsNoReason) {
  std::filesystem::create_directory(disk.path() / "hiberfil.sys");
  open();
  EXPECT_TRUE(computer->uncleanHives().empty());
  EXPECT_TRUE(computer->notices().empty());
}

TEST_F(HibernationTest, AHibernatedDiskIsReadWithAWarningAndNeverWritten) {
  sleep("hiberfil.sys", "HIBR");
  open();
  ASSERT_EQ(computer->notices().size(), 1U);
  EXPECT_NE(computer->notices()[0].find("shutdown /s /t 0"), std::string::npos);
  EXPECT_NE(computer->notices()[0].find("may be old"), std::string::npos);
  ASSERT_EQ(computer->uncleanHives().size(), 1U);
  EXPECT_NE(computer->uncleanHives()[0].find("powercfg /h off"), std::string::npos);
  const auto files = allFiles();
  registry().erase(key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)"));
  EXPECT_EQ(refusal(), computer->uncleanHives()[0] + "; nothing on the disk was changed");
  EXPECT_TRUE(allFiles() == files);
}

TEST_F(HibernationTest, NothingIsSavedToAHibernatedDiskWhereNothingChanged) {
  sleep("hiberfil.sys", "HIBR");
  open();
  EXPECT_EQ(refusal(), "");
}

TEST_F(HibernationTest, AnotherDriveMayHoldTheSleepingWindows) {
  const TemporaryFolder other;
  other.write("hiberfil.sys", "hibr");
  computer = machine::Machine::openOffline(
      {.root = disk.path(), .drives = {{'D', other.path()}}, .user = currentUser});
  ASSERT_EQ(computer->uncleanHives().size(), 1U);
  EXPECT_NE(computer->uncleanHives()[0].find(other.path().string()), std::string::npos);
}

TEST_F(HibernationTest, AFileThatCannotBeReadIsAReasonNotToWrite) {
  ASSERT_EQ(mkfifo((disk.path() / "hiberfil.sys").c_str(), 0600), 0);
  EXPECT_FALSE(isHibernated());
  open();
  ASSERT_EQ(computer->uncleanHives().size(), 1U);
  EXPECT_NE(computer->uncleanHives()[0].find("cannot be told"), std::string::npos);
}

TEST_F(HibernationTest, ALinkIsNotFollowedAndAReasonNotToWrite) {
  const TemporaryFolder outside;
  outside.write("wake", "wake");
  std::filesystem::create_symlink(outside.path() / "wake", disk.path() / "hiberfil.sys");
  EXPECT_NE(reason().find("cannot be told"), std::string::npos);
  std::filesystem::remove(outside.path() / "wake");
  EXPECT_NE(reason().find("cannot be told"), std::string::npos);
}

TEST_F(HibernationTest, ADriveWhoseRootCannotBeReadIsAReasonNotToWrite) {
  const TemporaryFolder other;
  chmod(disk.path().c_str(), 0755);
  chmod(other.path().c_str(), 0311);
  const machine::OfflineDisk both{.root = disk.path(), .drives = {{'D', other.path()}}, .user = {}};
  {
    const OrdinaryUser user;
    const auto line = machine::whyAsleep(both);
    ASSERT_TRUE(line);
    EXPECT_NE(line->find(other.path().string() + " cannot be read"), std::string::npos) << *line;
  }
  chmod(other.path().c_str(), 0700);
  EXPECT_EQ(machine::whyAsleep(both), std::nullopt);
}

#ifdef __x86_64__
TEST_F(HibernationTest, AnErrorWhereverItIsLookedForIsAReasonNotToWrite) {
  if (!canBeTraced) {
    GTEST_SKIP() << "a process under this sanitizer cannot be traced";
  }
  sleep("hiberfil.sys", "hibr");
  const auto look = [this] {
    if (reason().empty()) {
      throw std::runtime_error("it seems to be awake");
    }
  };
  const int failures =
      failEachCall(EIO, look, [](int call, bool seemsAwake) { EXPECT_FALSE(seemsAwake) << call; });
  EXPECT_GT(failures, 3);
}
#endif

TEST_F(HibernationTest, AStoppedSaveIsNotEndedWhereWindowsSleeps) {
  disk.write("zelvreg-saving.txt", "Windows/System32/config/SOFTWARE");
  sleep("hiberfil.sys", "hibr");
  const auto files = allFiles();
  open();
  ASSERT_EQ(computer->damagedHives().size(), 1U);
  EXPECT_NE(computer->damagedHives()[0].find("cannot be ended"), std::string::npos);
  EXPECT_NE(computer->damagedHives()[0].find("hibernated"), std::string::npos);
  EXPECT_TRUE(allFiles() == files);
}

}  // namespace
}  // namespace zelvreg::fixture
