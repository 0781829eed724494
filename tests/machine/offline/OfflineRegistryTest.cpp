#include "machine/offline/OfflineRegistry.h"

#include <gtest/gtest.h>

#include <chrono>

#include "machine/HiveBuilder.h"
#include "machine/TemporaryFolder.h"
#include "machine/base/MachineError.h"
#include "machine/offline/OfflineEnvironment.h"

namespace zelvreg::fixture {
namespace {

using machine::MachineError;
using machine::OfflineRegistry;

constexpr const char* version = R"(Microsoft\Windows NT\CurrentVersion)";

class OfflineRegistryTest : public ::testing::Test {
 protected:
  // A hive at a path on the disk, its folders made.
  [[nodiscard]] HiveBuilder hive(const std::string& path) const {
    const std::filesystem::path file = disk.path() / path;
    std::filesystem::create_directories(file.parent_path());
    return HiveBuilder(file);
  }

  // A user's hive with one value that names the user, written this many minutes ago.
  void user(const std::string& path, const std::string& name, int minutesAgo) const {
    hive(path).text(R"(Software\Vendor)", "", name);
    std::filesystem::last_write_time(
        disk.path() / path,
        std::filesystem::file_time_type::clock::now() - std::chrono::minutes(minutesAgo));
  }

  [[nodiscard]] OfflineRegistry read(const std::optional<std::string>& userName = {}) const {
    return machine::readOfflineRegistry({.root = disk.path(), .drives = {}, .user = userName});
  }

  [[nodiscard]] std::string refusal(const std::optional<std::string>& userName = {}) const {
    try {
      static_cast<void>(read(userName));
      return "it was read";
    } catch (const MachineError& error) {
      return error.what();
    }
  }

  // The variables of the current user.
  static std::map<std::string, std::string> environmentOf(const OfflineRegistry& offline) {
    return machine::readOfflineEnvironment(*offline.registry, offline.windowsFolder,
                                           offline.users.front());
  }

  // How many bytes the default value of a key has; 0 if it is not there.
  static std::size_t sizeOf(const OfflineRegistry& offline, std::string_view path) {
    machine::RegistryKey* key = offline.registry->find(path);
    const machine::RegistryValue* value =
        key == nullptr ? nullptr : offline.registry->values(*key).find(u"");
    return value == nullptr ? 0 : value->dataSize;
  }

  TemporaryFolder disk;
};

TEST_F(OfflineRegistryTest, HivesAreFoundInAnyCaseOfLetters) {
  hive("WINDOWS/system32/CONFIG/software").text("Vendor", "", "machine");
  hive("WINDOWS/system32/CONFIG/System").text(R"(ControlSet001\A)", "", "system");
  hive("WINDOWS/system32/CONFIG/default").text("A", "", "default");
  user("users/Anna/ntuser.dat", "anna", 1);
  hive("users/Anna/appdata/LOCAL/microsoft/windows/USRCLASS.DAT").text(".txt", "", "class");
  const OfflineRegistry offline = read();
  EXPECT_NE(sizeOf(offline, R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)"), 0U);
  EXPECT_NE(sizeOf(offline, R"(HKEY_LOCAL_MACHINE\SYSTEM\ControlSet001\A)"), 0U);
  EXPECT_NE(sizeOf(offline, R"(HKEY_USERS\.DEFAULT\A)"), 0U);
  EXPECT_NE(sizeOf(offline, R"(HKEY_CURRENT_USER\Software\Vendor)"), 0U);
  EXPECT_NE(sizeOf(offline, R"(HKEY_CURRENT_USER\Software\Classes\.txt)"), 0U);
  EXPECT_NE(sizeOf(offline, R"(HKEY_CLASSES_ROOT\.txt)"), 0U);
  EXPECT_EQ(offline.windowsFolder, R"(C:\WINDOWS)");
  EXPECT_EQ(offline.users.front().name, "Anna");
  EXPECT_EQ(offline.bits, 32);
  EXPECT_TRUE(offline.damaged.empty());
  EXPECT_FALSE(offline.registry->contentChanged());
}

TEST_F(OfflineRegistryTest, ADiskOfAnOldWindowsIsReadToo) {
  hive("WINNT/system32/config/SOFTWARE").text(version, "SystemRoot", R"(D:\WINNT)");
  user("Documents and Settings/Otto/NTUSER.DAT", "otto", 1);
  hive("Documents and Settings/Otto/Local Settings/Application Data/Microsoft/Windows/UsrClass.dat")
      .text(".txt", "", "class");
  const OfflineRegistry offline = read();
  EXPECT_EQ(offline.systemDrive, 'D');
  EXPECT_EQ(offline.windowsFolder, R"(D:\WINNT)");
  EXPECT_NE(sizeOf(offline, R"(HKEY_CURRENT_USER\Software\Classes\.txt)"), 0U);
  EXPECT_EQ(environmentOf(offline).at("USERPROFILE"), R"(D:\Documents and Settings\Otto)");
  EXPECT_EQ(environmentOf(offline).at("SystemRoot"), R"(D:\WINNT)");
}

TEST_F(OfflineRegistryTest, SidsComeFromTheProfileListElseTheyAreInvented) {
  {
    HiveBuilder software = hive("Windows/System32/config/SOFTWARE");
    software.text(std::string(version) + R"(\ProfileList\S-1-5-21-7-7-7-1001)", "ProfileImagePath",
                  R"(%SystemDrive%\Users\ANNA)", 2);
    software.text(std::string(version) + R"(\ProfileList\rubbish)", "ProfileImagePath",
                  R"(C:\Users\Bert)", 2);
  }
  user("Users/Anna/NTUSER.DAT", "anna", 1);
  user("Users/Bert/NTUSER.DAT", "bert", 2);
  EXPECT_EQ(read().users.front().sid, "S-1-5-21-7-7-7-1001");
  const std::string invented = read("bert").users.front().sid;
  EXPECT_TRUE(invented.starts_with("S-1-5-21-")) << invented;
  EXPECT_EQ(read("BERT").users.front().sid, invented);
  EXPECT_NE(sizeOf(read(), "HKEY_USERS\\" + invented + R"(\Software\Vendor)"), 0U);
}

TEST_F(OfflineRegistryTest, TheCurrentUserIsTheOneAskedForElseTheLastWritten) {
  user("Users/Anna/NTUSER.DAT", "anna", 30);
  user("Users/Bert/NTUSER.DAT", "bert", 10);
  user("Users/Carl/NTUSER.DAT", "carl", 20);
  user("Users/Default/NTUSER.DAT", "default", 0);
  EXPECT_EQ(read().users.front().name, "Bert");
  EXPECT_EQ(read("carl").users.front().name, "Carl");
  EXPECT_EQ(refusal("Dora"), "there is no user \"Dora\" on this disk; known are Anna, Bert, Carl");
}

TEST_F(OfflineRegistryTest, AUsersNameIsInAnyScriptButInOtherBytesThanUtf8ItIsLeftOutAndNamed) {
  hive("Windows/System32/config/SOFTWARE").text("Vendor", "", "machine");
  user("Users/\u0418\u0432\u0430\u043D/NTUSER.DAT", "ivan", 10);
  user("Users/J\xF6rg/NTUSER.DAT", "joerg", 1);
  const OfflineRegistry offline = read("\u0438\u0412\u0410\u041D");
  EXPECT_EQ(offline.users.front().name, "\u0418\u0432\u0430\u043D");
  EXPECT_EQ(environmentOf(offline).at("USERPROFILE"), "C:\\Users\\\u0418\u0432\u0430\u043D");
  ASSERT_EQ(offline.damaged.size(), 1U);
  EXPECT_NE(offline.damaged[0].find("its name is no UTF-8"), std::string::npos);
}

TEST_F(OfflineRegistryTest, ADamagedHiveIsLeftOutAndNamed) {
  hive("Windows/System32/config/SOFTWARE").text("Vendor", "", "machine");
  disk.write("Windows/System32/config/SYSTEM", "rubbish");
  user("Users/Anna/NTUSER.DAT", "anna", 10);
  disk.write("Users/Bert/NTUSER.DAT", "rubbish");
  const OfflineRegistry offline = read();
  ASSERT_EQ(offline.damaged.size(), 2U);
  EXPECT_NE(offline.damaged[0].find("SYSTEM"), std::string::npos);
  EXPECT_NE(offline.damaged[1].find("Bert"), std::string::npos);
  EXPECT_EQ(offline.users.front().name, "Anna");
  EXPECT_NE(sizeOf(offline, R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)"), 0U);
}

TEST_F(OfflineRegistryTest, CodePageBitsAndEnvironmentAreThoseOfTheHives) {
  disk.makeFolder("Windows/SYSWOW64");
  {
    HiveBuilder system = hive("Windows/System32/config/SYSTEM");
    system.number("Select", "Current", 2);
    system.text(R"(ControlSet001\Control\Nls\CodePage)", "ACP", "1250");
    system.text(R"(ControlSet002\Control\Nls\CodePage)", "ACP", "1251");
    const char* variables = R"(ControlSet002\Control\Session Manager\Environment)";
    system.text(variables, "Path", R"(%SystemRoot%\system32)", 2);
    system.text(variables, "USERNAME", "SYSTEM");
    HiveBuilder software = hive("Windows/System32/config/SOFTWARE");
    software.text(R"(Microsoft\Windows\CurrentVersion)", "ProgramFilesDir", R"(C:\Programme)");
    software.text(R"(Microsoft\Windows\CurrentVersion)", "ProgramFilesDir (x86)",
                  R"(C:\Programme (x86))");
    HiveBuilder anna = hive("Users/Anna/NTUSER.DAT");
    anna.text("Environment", "TEMP", R"(%USERPROFILE%\tmp)", 2);
    anna.text("Environment", "PATH", R"(C:\own)");
  }
  const OfflineRegistry offline = read();
  EXPECT_EQ(offline.bits, 64);
  EXPECT_EQ(offline.codePage, 1251U);
  const auto environment = environmentOf(offline);
  EXPECT_EQ(environment.at("Path"), R"(C:\Windows\system32;C:\own)");
  EXPECT_EQ(environment.at("ProgramFiles"), R"(C:\Programme (x86))");
  EXPECT_EQ(environment.at("ProgramW6432"), R"(C:\Programme)");
  EXPECT_EQ(environment.at("TEMP"), R"(C:\Users\Anna\tmp)");
  EXPECT_FALSE(environment.contains("USERNAME"));
}

TEST_F(OfflineRegistryTest, ADiskWithoutHivesIsRefused) {
  disk.makeFolder("Windows/System32/config");
  EXPECT_NE(refusal().find("there is no registry hive"), std::string::npos);
}

TEST_F(OfflineRegistryTest, LinksThatLeaveTheDiskAreNotFollowed) {
  const TemporaryFolder elsewhere;
  { const HiveBuilder other(elsewhere.path() / "NTUSER.DAT"); }
  user("Users/Anna/NTUSER.DAT", "anna", 1);
  disk.makeFolder("Users/Bert");
  std::filesystem::create_symlink(elsewhere.path() / "NTUSER.DAT",
                                  disk.path() / "Users/Bert/NTUSER.DAT");
  std::filesystem::create_directory_symlink(elsewhere.path(), disk.path() / "Users/Carl");
  std::filesystem::create_directory_symlink("Anna", disk.path() / "Users/Old name");
  EXPECT_NE(refusal("nobody").find("known are Anna"), std::string::npos);
  EXPECT_EQ(refusal("nobody").find("Bert"), std::string::npos);
}

TEST_F(OfflineRegistryTest, AHiveThatIsALinkIsNamedAndLeftOut) {
  const TemporaryFolder elsewhere;
  { const HiveBuilder other(elsewhere.path() / "SYSTEM"); }
  user("Users/Anna/NTUSER.DAT", "anna", 1);
  const std::filesystem::path config = disk.path() / "Windows/System32/config";
  std::filesystem::create_directories(config);
  std::filesystem::create_symlink(elsewhere.path() / "SYSTEM", config / "SYSTEM");
  std::filesystem::create_symlink("../../../Users/Anna/NTUSER.DAT", config / "SOFTWARE");
  std::filesystem::create_directory_symlink(elsewhere.path(), disk.path() / "Users/Anna/AppData");
  const OfflineRegistry offline = read();
  ASSERT_EQ(offline.damaged.size(), 3U);
  for (const std::size_t line : {0U, 1U, 2U}) {
    EXPECT_NE(offline.damaged[line].find("is a link"), std::string::npos) << offline.damaged[line];
  }
  EXPECT_EQ(offline.registry->find(R"(HKEY_LOCAL_MACHINE\SYSTEM)"), nullptr);
}

TEST_F(OfflineRegistryTest, NothingOnTheDiskIsWritten) {
  hive("Windows/System32/config/SOFTWARE").text("Vendor", "", "machine");
  user("Users/Anna/NTUSER.DAT", "anna", 10);
  const std::string before = disk.read("Windows/System32/config/SOFTWARE");
  const auto time = std::filesystem::last_write_time(disk.path() / "Users/Anna/NTUSER.DAT");
  {
    const OfflineRegistry offline = read();
    machine::RegistryKey* vendor = offline.registry->find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)");
    offline.registry->setValue(*vendor, u"x", 3, {});
    offline.registry->erase(*vendor);
  }
  EXPECT_EQ(disk.read("Windows/System32/config/SOFTWARE"), before);
  EXPECT_EQ(std::filesystem::last_write_time(disk.path() / "Users/Anna/NTUSER.DAT"), time);
}

}  // namespace
}  // namespace zelvreg::fixture
