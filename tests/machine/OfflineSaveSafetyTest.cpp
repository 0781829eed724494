// What saving an offline disk refuses, and that it leaves either the old hive or the new one.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <ctime>

#include "machine/OfflineDiskFixture.h"
#include "machine/OrdinaryUser.h"

namespace zelvreg::fixture {
namespace {

using namespace std::string_literals;

constexpr const char* vendor = R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)";

class OfflineSaveSafetyTest : public OfflineDiskTest {
 protected:
  void SetUp() override {
    hive(software).text(R"(Vendor\Product)", "x", "old");
    hive(system).text(R"(ControlSet001\A)", "x", "old");
    hive(anna).text(R"(Software\Vendor)", "x", "old");
    open();
  }

  // One change in each hive.
  void changeAll() {
    registry().erase(key(std::string(vendor) + R"(\Product)"));
    registry().makeChild(key(R"(HKEY_LOCAL_MACHINE\SYSTEM\ControlSet001)"), u"B");
    setValue(R"(HKEY_CURRENT_USER\Software\Vendor)", u"x", REG_BINARY, "new");
  }

  void setTime(const std::string& file, std::time_t seconds) const {
    const std::array<timespec, 2> times{{{seconds, 0}, {seconds, 0}}};
    ASSERT_EQ(utimensat(AT_FDCWD, (disk.path() / file).c_str(), times.data(), 0), 0);
  }
};

TEST_F(OfflineSaveSafetyTest, EachOldHiveStaysAsABackup) {
  const auto old = allFiles();
  changeAll();
  computer->save();
  const auto now = allFiles();
  EXPECT_EQ(now.size(), 2 * old.size());
  for (const auto& [name, bytes] : old) {
    EXPECT_TRUE(now.at(name + ".bak") == bytes) << name;
    EXPECT_FALSE(now.at(name) == bytes) << name;
  }
}

TEST_F(OfflineSaveSafetyTest, AnOlderBackupStaysUnderItsTime) {
  disk.write(software + ".bak"s, "the first");
  setTime(software + ".bak"s, 1'769'867'106);
  registry().erase(key(std::string(vendor) + R"(\Product)"));
  computer->save();
  EXPECT_EQ(disk.read(software + ".bak-2026-01-31T13-45-06"s), "the first");
  EXPECT_EQ(allFiles().size(), 5U);
}

TEST_F(OfflineSaveSafetyTest, TheOldestBackupIsKeptWithTheNewestUpToSoMany) {
  keptBackups = 2;
  open();
  const std::string first = disk.read(software);
  constexpr int saves = 5;
  for (int save = 0; save < saves; ++save) {
    setTime(software, 1'000'000'000 + save);
    open();
    setValue(vendor, u"x", REG_BINARY, std::to_string(save));
    computer->save();
  }
  EXPECT_TRUE(disk.read(software + ".bak-2001-09-09T01-46-40"s) == first);
  EXPECT_TRUE(disk.has(software + ".bak-2001-09-09T01-46-43"s));
  EXPECT_TRUE(disk.has(software + ".bak"s));
  EXPECT_EQ(allFiles().size(), 3U + 3U);
}

TEST_F(OfflineSaveSafetyTest, BackupsOfOneTimeAreToldApart) {
  for (const char* content : {"one", "two", "three"}) {
    std::filesystem::remove(disk.path() / (software + ".bak"s));
    disk.write(software + ".bak"s, content);
    setTime(software + ".bak"s, 1'000'000'000);
    registry().setValue(key(vendor), u"x", REG_BINARY,
                        {reinterpret_cast<const std::byte*>(content), 3});
    computer->save();
  }
  EXPECT_EQ(disk.read(software + ".bak-2001-09-09T01-46-40"s), "one");
  EXPECT_EQ(disk.read(software + ".bak-2001-09-09T01-46-40.2"s), "two");
  EXPECT_EQ(disk.read(software + ".bak-2001-09-09T01-46-40.3"s), "three");
}

TEST_F(OfflineSaveSafetyTest, ABackupThatIsTheHiveItselfIsNotInTheWay) {
  const std::string old = disk.read(software);
  std::filesystem::create_hard_link(disk.path() / software, disk.path() / (software + ".bak"s));
  registry().erase(key(vendor));
  computer->save();
  EXPECT_TRUE(disk.read(software + ".bak"s) == old);
  EXPECT_FALSE(disk.read(software) == old);
  EXPECT_EQ(allFiles().size(), 4U);
}

TEST_F(OfflineSaveSafetyTest, AHiveThatWasNotShutDownCleanlyIsNamedAndNeverWritten) {
  EXPECT_TRUE(computer->uncleanHives().empty());
  computer.reset();
  makeUnclean(system, 4);
  open();
  const auto files = allFiles();
  ASSERT_EQ(computer->uncleanHives().size(), 1U);
  EXPECT_NE(computer->uncleanHives()[0].find(system), std::string::npos);
  EXPECT_NE(computer->uncleanHives()[0].find("shut it down"), std::string::npos);
  changeAll();
  EXPECT_EQ(refusal(), computer->uncleanHives()[0]);
  EXPECT_TRUE(allFiles() == files);
}

TEST_F(OfflineSaveSafetyTest, AnUncleanHiveDoesNotKeepTheOthersFromBeingWritten) {
  computer.reset();
  makeUnclean(system, 8);
  open();
  EXPECT_EQ(computer->uncleanHives().size(), 1U);
  registry().erase(key(vendor));
  EXPECT_EQ(refusal(), "");
  EXPECT_FALSE(content(software).contains(R"(\Vendor)"));
}

TEST_F(OfflineSaveSafetyTest, AHiveThatSomebodyElseHasWrittenIsNotOverwritten) {
  disk.write(system, disk.read(system) + std::string(4096, '\0'));
  const auto files = allFiles();
  changeAll();
  EXPECT_NE(refusal().find("open the disk again"), std::string::npos) << refusal();
  EXPECT_TRUE(allFiles() == files);
}

TEST_F(OfflineSaveSafetyTest, AFolderThatIsReadOnlyLeavesAllHivesAsTheyWere) {
  const auto files = allFiles();
  changeAll();
  chmod(disk.path().c_str(), 0755);
  const std::filesystem::path profile = disk.path() / "Users/Anna";
  chmod(profile.c_str(), 0555);
  const std::filesystem::path config = disk.path() / "Windows/System32/config";
  chmod(config.c_str(), 0777);
  {
    const OrdinaryUser user;
    EXPECT_NE(refusal().find("NTUSER.DAT cannot be written: Permission denied"), std::string::npos)
        << refusal();
  }
  chmod(profile.c_str(), 0755);
  EXPECT_TRUE(allFiles() == files);
  EXPECT_EQ(refusal(), "");
  EXPECT_FALSE(content(software).contains(R"(\Vendor\Product)"));
}

TEST_F(OfflineSaveSafetyTest, AFullDiskLeavesAllHivesAsTheyWere) {
  const auto files = allFiles();
  changeAll();
  auto* handler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  for (const rlim_t size : {0U, 5000U}) {
    const rlimit limit{size, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    const std::string line = refusal();
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_NE(line.find("cannot be written"), std::string::npos) << line;
    EXPECT_TRUE(allFiles() == files);
  }
  std::signal(SIGXFSZ, handler);
}

}  // namespace
}  // namespace zelvreg::fixture
