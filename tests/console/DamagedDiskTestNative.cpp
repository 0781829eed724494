// Disks whose hives are not as they should be, from the command line on; the Windows program takes
// no disk.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>

#include "console/CommandRun.h"
#include "machine/OfflineDiskFixture.h"
#include "machine/hive/HiveBytes.h"

namespace zelvreg::console {
namespace {

using machine::HiveBytes;
using namespace machine::hiveFormat;

class DamagedDiskTest : public fixture::OfflineDiskTest {
 protected:
  void SetUp() override {
    fixture::HiveBuilder builder = hive(software);
    builder.text(R"(Microsoft\Windows NT\CurrentVersion\Fonts)", "Gone", "C:\\gone.ttf");
    builder.text(R"(Microsoft\Windows NT\CurrentVersion\FontsElsewhere)", "x", "y");
  }

  // What a command ends with, its line on the error stream; 2 for one that throws.
  int run(std::vector<std::string> arguments) {
    CommandRun command;
    const int status = command.ended("--offline", disk.path().string(), std::move(arguments));
    said = command.error.str();
    return status;
  }

  // A scan ends with two and names `what`; a repair does so, too, and changes no file.
  void isNamedAndNotRepaired(const std::string& what) {
    const auto files = allFiles();
    EXPECT_EQ(run({"scan", "--only", "fonts"}), failed);
    EXPECT_NE(said.find(what), std::string::npos) << said;
    EXPECT_EQ(run({"fix", "--all", "--yes", "--only", "fonts"}), failed);
    EXPECT_NE(said.find("nothing was repaired"), std::string::npos) << said;
    EXPECT_TRUE(allFiles() == files);
  }

  std::string said;
};

TEST_F(DamagedDiskTest, AWholeDiskIsRepaired) {
  EXPECT_EQ(run({"scan", "--only", "fonts"}), problemsFound) << said;
  EXPECT_EQ(run({"fix", "--all", "--yes", "--only", "fonts"}), nothingFound) << said;
  EXPECT_EQ(run({"scan", "--only", "fonts"}), nothingFound) << said;
}

TEST_F(DamagedDiskTest, AHiveThatIsALink) {
  const fixture::TemporaryFolder elsewhere;
  { const fixture::HiveBuilder other(elsewhere.path() / "SYSTEM"); }
  std::filesystem::create_symlink(elsewhere.path() / "SYSTEM", disk.path() / system);
  isNamedAndNotRepaired("SYSTEM: is a link");
}

TEST_F(DamagedDiskTest, AHiveWhoseHeaderSpeaksOfMoreThanThereIs) {
  hive(system).key("x");
  HiveBytes bytes(disk.read(system));
  bytes.put<std::uint32_t>(binsSizeOffset, 0x80000000U);
  disk.write(system, bytes.all());
  isNamedAndNotRepaired("more content than it has");
}

TEST_F(DamagedDiskTest, AnEntryOfAScannedKeyThatLeadsToAnothersKey) {
  HiveBytes bytes(disk.read(software));
  const std::string content = bytes.all();
  const std::size_t version = content.find("CurrentVersion") - keyName;
  const std::size_t list = bytes.follow(version + subkeyList);
  bytes.putLink(list + listEntries + 8, content.find("Microsoft") - keyName);
  disk.write(software, bytes.all());
  isNamedAndNotRepaired("CurrentVersion");
}

TEST_F(DamagedDiskTest, AValueThatLiesInItsOwnCellIsNotRepairedAndLeavesNothing) {
  HiveBytes bytes(disk.read(software));
  const std::size_t key = bytes.all().find("FontsElsewhere") - keyName;
  const std::size_t value = bytes.follow(bytes.follow(key + valueList) + cellHeader);
  bytes.put<std::uint32_t>(value + valueSize, 8);
  bytes.putLink(value + valueData, value);
  disk.write(software, bytes.all());
  const auto files = allFiles();
  EXPECT_EQ(run({"scan", "--only", "fonts"}), problemsFound) << said;
  EXPECT_EQ(run({"fix", "--all", "--yes", "--only", "fonts"}), failed);
  EXPECT_NE(said.find("is damaged and is not written"), std::string::npos) << said;
  EXPECT_TRUE(allFiles() == files);
}

TEST_F(DamagedDiskTest, ALogThatIsAPipeKeepsNobodyWaiting) {
  constexpr std::size_t firstSequence = 4;
  makeUnclean(software, firstSequence);
  ASSERT_EQ(mkfifo((disk.path() / (software + std::string(".LOG1"))).c_str(), 0600), 0);
  EXPECT_EQ(run({"scan", "--only", "fonts"}), problemsFound) << said;
  EXPECT_EQ(run({"fix", "--all", "--yes", "--only", "fonts"}), failed);
  EXPECT_NE(said.find("SOFTWARE.LOG1 is no file"), std::string::npos) << said;
}

}  // namespace
}  // namespace zelvreg::console
