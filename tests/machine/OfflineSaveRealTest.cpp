// Saving real disks.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "machine/OfflineDiskFixture.h"
#include "machine/RealDisk.h"

namespace zelvreg::fixture {
namespace {

constexpr const char* usrClass = "Users/first/AppData/Local/Microsoft/Windows/UsrClass.dat";

class OfflineSaveRealTest : public OfflineDiskTest {
 protected:
  void SetUp() override {
    if (!hasRealDisks()) {
      GTEST_SKIP() << "ZELVREG_REAL_HIVES names no folder with real hives";
    }
  }

  // Takes a copy of one of the disks, which may be written. A disk with several users needs the one
  // who is the current one: the order in which their hives are copied says nothing.
  void copyDisk(const char* name, std::optional<std::string> user = {}) {
    copyRealDisk(name, disk.path());
    currentUser = std::move(user);
    open();
  }

  // Erases the subkey of this number; the path below the hive that it had.
  std::string eraseSubkey(const std::string& parent, std::size_t number) {
    machine::RegistryKey& erased = **registry().children(key(parent)).at(number);
    std::string path = machine::Registry::pathOf(erased);
    registry().erase(erased);
    return path;
  }
};

// Whether a line of differences is about this key or one below it, which went.
bool isBelow(const std::string& line, const std::string& path) {
  const std::string start = "-" + path;
  return line.starts_with(start) &&
         (line.size() == start.size() || line[start.size()] == '\\' || line[start.size()] == '|');
}

TEST_F(OfflineSaveRealTest, ChangesOfAMachineHiveLeaveAllElseUnchanged) {
  copyDisk("windows7", "first");
  const HiveContent before = content(system);
  const std::string services = R"(HKEY_LOCAL_MACHINE\SYSTEM\ControlSet001\Services)";
  const std::string erased = eraseSubkey(services, 20).substr(services.find("\\ControlSet"));
  registry().makeChild(registry().makeChild(key(services), u"a_new \u00E4 one"), u"below");
  setValue(services + R"(\EventLog)", u"Start", REG_DWORD, std::string("\4\0\0\0", 4));
  setValue(services + R"(\EventLog)", u"large", REG_BINARY, std::string(50'000, 'x'));
  EXPECT_EQ(refusal(), "");
  EXPECT_TRUE(computer->unsavedChanges().empty());
  Lines lines = differences(before, content(system));
  EXPECT_GT(std::erase_if(lines, [&](const std::string& line) { return isBelow(line, erased); }),
            1U);
  const std::string path = R"(\ControlSet001\services\)";
  Lines expected;
  for (const char* line : {"+%a_new \xC3\xA4 one", "+%a_new \xC3\xA4 one\\below",
                           "*%eventlog|Start", "+%eventlog|large"}) {
    expected.insert(std::string(1, *line) + path + (line + 2));
  }
  EXPECT_EQ(lines, expected);
}

TEST_F(OfflineSaveRealTest, AUsersClassesCanBeThinnedOut) {
  copyDisk("windows7", "first");
  const HiveContent before = content(usrClass);
  const auto files = allFiles();
  std::vector<std::string> gone;
  const std::string classes = machine::Registry::pathOf(registry().currentUser()) + "_Classes";
  const std::size_t count = registry().children(key(classes)).size();
  ASSERT_GT(count, 10U);
  for (std::size_t number = 0; number < count / 3; ++number) {
    gone.push_back(eraseSubkey(classes, number).substr(classes.size()));
  }
  EXPECT_EQ(refusal(), "");
  Lines lines = differences(before, content(usrClass));
  EXPECT_GE(lines.size(), gone.size());
  std::erase_if(lines, [&](const std::string& line) {
    return std::ranges::any_of(gone, [&](const std::string& path) { return isBelow(line, path); });
  });
  EXPECT_EQ(lines, Lines{});
  auto now = allFiles();
  EXPECT_TRUE(now[usrClass + std::string(".bak")] == files.at(usrClass));
  EXPECT_EQ(now.size(), files.size() + 1);
}

TEST_F(OfflineSaveRealTest, ADiskThatIsReadWithoutItsLogsIsNotChanged) {
  leavesLogs = true;
  copyDisk("dirty");
  const auto files = allFiles();
  ASSERT_EQ(computer->uncleanHives().size(), 1U);
  registry().makeChild(key(R"(HKEY_LOCAL_MACHINE\SYSTEM\ControlSet001)"), u"new");
  EXPECT_EQ(refusal(), computer->uncleanHives()[0]);
  EXPECT_TRUE(allFiles() == files);
}

TEST_F(OfflineSaveRealTest, HivesOfAnOldSystemAreClean) {
  copyDisk("nt4");
  EXPECT_TRUE(computer->uncleanHives().empty());
  const HiveContent before = content(software);
  registry().makeChild(key(R"(HKEY_LOCAL_MACHINE\SOFTWARE)"), u"New");
  EXPECT_EQ(refusal(), "");
  EXPECT_EQ(differences(before, content(software)), Lines{R"(+\New)"});
}

}  // namespace
}  // namespace zelvreg::fixture
