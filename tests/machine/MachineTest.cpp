#include "machine/Machine.h"
#include "machine/base/MachineError.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <windows.h>

#include "machine/base/CodePage.h"
#include "machine/computer/Clock.h"
#include "machine/computer/Environment.h"
#include "machine/files/Drives.h"
#include "machine/registry/Registry.h"
#include "support/MachineFixture.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

using zelvreg::fixture::TemporaryFolder;

constexpr const char* emptyRegistry = "REGEDIT4\n\n";
constexpr const char* vendorKey = R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)";

std::string refusalOf(const std::filesystem::path& folder) {
  try {
    Machine::open(folder);
  } catch (const MachineError& error) {
    return error.what();
  }
  return "opened";
}

bool holds(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

class MachineTest : public zelvreg::fixture::MachineFixture {};

TEST_F(MachineTest, TakesItsSettingsFromTheFile) {
  setting("bits", "32");
  setting("codepage", "1251");
  setting("user", "Ann");
  setting("suite", "1");
  variable("TEMP", "D:\\t");
  const Machine& machine = start();
  EXPECT_FALSE(machine.is64Bit());
  EXPECT_EQ(machine.codePage().number(), 1251U);
  EXPECT_TRUE(machine.hasSuite());
  EXPECT_EQ(machine.environment().get(u"temp"), u"D:\\t");
  EXPECT_EQ(machine.environment().get(u"USERNAME"), u"Ann");
  EXPECT_EQ(machine.clock().localTime().wHour, 13);
  EXPECT_TRUE(machine.damagedHives().empty());
}

TEST_F(MachineTest, NeedsNothingButTheRegistry) {
  const TemporaryFolder folder;
  folder.write("registry.reg", emptyRegistry);
  const auto machine = Machine::open(folder.path());
  EXPECT_TRUE(machine->is64Bit());
  EXPECT_FALSE(machine->hasSuite());
  EXPECT_FALSE(machine->drives().find(u"C:\\").exists());
}

TEST(MachineFolder, SaysWhatIsWrongWithIt) {
  const TemporaryFolder folder;
  EXPECT_TRUE(holds(refusalOf(folder.path() / "missing"), "is not a folder"));
  EXPECT_TRUE(holds(refusalOf(folder.path()), "has no registry.reg"));
  folder.write("registry.reg", emptyRegistry);
  EXPECT_TRUE(holds(refusalOf(folder.path() / "registry.reg"), "is not a folder"));
  EXPECT_EQ(refusalOf(folder.path()), "opened");
  folder.write("machine.ini", "[machine]\nbits=7\n");
  EXPECT_TRUE(holds(refusalOf(folder.path()), "machine.ini:2: "));
  folder.write("machine.ini", "");
  folder.write("registry.reg", "nonsense\n");
  EXPECT_TRUE(holds(refusalOf(folder.path()), "registry.reg"));
  std::filesystem::remove(folder.path() / "registry.reg");
  folder.makeFolder("registry.reg");
  EXPECT_TRUE(holds(refusalOf(folder.path()), "cannot be read"));
}

TEST(MachineFolder, IsRefusedWhereAnythingOfItIsALink) {
  for (const char* name :
       {"registry.reg", "machine.ini", "security.txt", "attributes.txt", "saving.txt", "C"}) {
    const TemporaryFolder elsewhere;
    elsewhere.write("file", emptyRegistry);
    elsewhere.makeFolder("folder");
    const TemporaryFolder folder;
    folder.write("registry.reg", emptyRegistry);
    std::filesystem::remove(folder.path() / name);
    const bool isDrive = std::string_view(name).size() == 1;
    std::filesystem::create_symlink(elsewhere.path() / (isDrive ? "folder" : "file"),
                                    folder.path() / name);
    const std::string line = refusalOf(folder.path());
    EXPECT_TRUE(holds(line, name)) << line;
    EXPECT_TRUE(holds(line, "is a link")) << line;
    EXPECT_EQ(elsewhere.read("file"), emptyRegistry);
  }
}

TEST(MachineFolder, IsRefusedAndDoesNotWaitWhereAnythingOfItIsAPipe) {
  for (const char* name :
       {"registry.reg", "machine.ini", "security.txt", "attributes.txt", "saving.txt", "C"}) {
    const TemporaryFolder folder;
    folder.write("registry.reg", emptyRegistry);
    std::filesystem::remove(folder.path() / name);
    ASSERT_EQ(mkfifo((folder.path() / name).c_str(), 0600), 0);
    const std::string line = refusalOf(folder.path());
    EXPECT_TRUE(holds(line, name)) << line;
    EXPECT_TRUE(holds(line, "no plain file")) << line;
  }
}

TEST(MachineFolder, SaysThatItEndedAStoppedSaveAndRemovesWhatThatLeft) {
  const TemporaryFolder folder;
  folder.write("registry.reg", emptyRegistry);
  folder.write(".security.txt.zelvreg-abcdef", "");
  folder.write(".attributes.txt.zelvreg-abcdef", "left");
  folder.write("saving.txt", ".security.txt.zelvreg-abcdef\nsecurity.txt\n");
  EXPECT_EQ(Machine::open(folder.path())->notices().size(), 1U);
  EXPECT_TRUE(folder.has("security.txt"));
  EXPECT_FALSE(folder.has(".attributes.txt.zelvreg-abcdef"));
  EXPECT_TRUE(Machine::open(folder.path())->notices().empty());
}

TEST(MachineFolder, DoesNothingThatANoteOfAStrangerAsksFor) {
  for (const std::string& note :
       {std::string("D\nC\n"), std::string(".C.zelvreg-abcdef\n..\n"),
        std::string("..\nregistry.reg\n"), std::string("\0\ni\n", 4),
        std::string(".registry.reg\0.zelvreg-abcdef\nregistry.reg\0\n", 44)}) {
    const TemporaryFolder folder;
    folder.write("registry.reg", emptyRegistry);
    folder.write(".registry.reg", "a stranger's");
    folder.makeFolder("D");
    folder.write("saving.txt", note);
    EXPECT_TRUE(holds(refusalOf(folder.path()), "saving.txt: names files that this program"));
    EXPECT_EQ(folder.read("registry.reg"), emptyRegistry);
    EXPECT_TRUE(folder.has("D"));
    EXPECT_FALSE(folder.has("C"));
  }
}

TEST(MachineFolder, HasOneFolderForEachDrive) {
  const TemporaryFolder folder;
  folder.write("registry.reg", emptyRegistry);
  folder.makeFolder("c");
  folder.makeFolder("E");
  folder.makeFolder("no drive");
  folder.write("F", "a file");
  const auto machine = Machine::open(folder.path());
  EXPECT_TRUE(machine->drives().find(u"C:\\").exists());
  EXPECT_TRUE(machine->drives().find(u"e:\\").exists());
  EXPECT_FALSE(machine->drives().find(u"F:\\").exists());
}

TEST(MachineFolder, RefusesTwoFoldersForOneDrive) {
  const TemporaryFolder folder;
  folder.write("registry.reg", emptyRegistry);
  folder.makeFolder("c");
  folder.makeFolder("C");
  EXPECT_TRUE(holds(refusalOf(folder.path()), "two folders for drive C:"));
}

TEST(MachineFolder, RefusesWrongLinesOfItsLists) {
  const TemporaryFolder folder;
  folder.write("registry.reg", emptyRegistry);
  folder.write("security.txt", "\nC:\\a\tD:(x)\n");
  EXPECT_TRUE(holds(refusalOf(folder.path()), "security.txt:2: "));
  folder.write("security.txt", "C:\\a D:\n");
  EXPECT_TRUE(holds(refusalOf(folder.path()), "security.txt:1: there is no tab"));
  folder.write("security.txt", "HKEY_LOCAL_MACHINE\\Missing\tD:\n");
  EXPECT_TRUE(holds(refusalOf(folder.path()), "security.txt:1: "));
  folder.write("security.txt", "nowhere\tD:\n");
  EXPECT_TRUE(holds(refusalOf(folder.path()), "security.txt:1: "));
  folder.write("security.txt", "");
  folder.write("attributes.txt", "C:\\a\thidden\n");
  EXPECT_TRUE(holds(refusalOf(folder.path()), "attributes.txt:1: "));
  folder.write("attributes.txt", "C:\\a\t2\nC:\\\xC4\t2\n");
  EXPECT_TRUE(holds(refusalOf(folder.path()), "attributes.txt:2: the line is not UTF-8"));
}

TEST(MachineFolder, BelongsToOneProcessAtATime) {
  const TemporaryFolder folder;
  folder.write("registry.reg", emptyRegistry);
  auto machine = Machine::open(folder.path());
  const pid_t child = fork();
  if (child == 0) _exit(holds(refusalOf(folder.path()), "in use by another process") ? 0 : 1);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  machine.reset();
  EXPECT_EQ(refusalOf(folder.path()), "opened");
}

TEST_F(MachineTest, WritesNothingWhenNothingHasChanged) {
  key(vendorKey, R"("Name"="text")");
  security(vendorKey, "D:(A;CI;KA;;;BA)");
  start();
  const std::string before = machineFolder().read("registry.reg");
  const auto time = std::filesystem::last_write_time(machineFolder().path() / "registry.reg");
  computer().save();
  EXPECT_EQ(machineFolder().read("registry.reg"), before);
  EXPECT_EQ(std::filesystem::last_write_time(machineFolder().path() / "registry.reg"), time);
  EXPECT_FALSE(machineFolder().has("attributes.txt"));
}

TEST_F(MachineTest, OpensAgainAsItWasSaved) {
  key(vendorKey);
  file(R"(C:\a.txt)");
  start();
  HKEY opened = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Vendor", 0,
                          KEY_SET_VALUE | KEY_WOW64_64KEY, &opened),
            ERROR_SUCCESS);
  const BYTE text[] = {'x', 0, 0, 0};
  EXPECT_EQ(RegSetValueExW(opened, u"New", 0, REG_SZ, text, sizeof text), ERROR_SUCCESS);
  RegCloseKey(opened);
  EXPECT_NE(SetFileAttributesW(u"C:\\a.txt", FILE_ATTRIBUTE_HIDDEN), FALSE);
  restart();
  EXPECT_EQ(GetFileAttributesW(u"C:\\a.txt"), FILE_ATTRIBUTE_HIDDEN);
  ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Vendor", 0,
                          KEY_QUERY_VALUE | KEY_WOW64_64KEY, &opened),
            ERROR_SUCCESS);
  EXPECT_EQ(RegQueryValueExW(opened, u"New", nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
  RegCloseKey(opened);
  EXPECT_EQ(machineFolder().read("attributes.txt"), "C:\\a.txt\t2\n");
  EXPECT_FALSE(machineFolder().has("security.txt"));
}

TEST_F(MachineTest, RecordsOfNamesInEveryScriptOpenAgainAsTheyWereSaved) {
  setting("codepage", "932");
  // The last character is half of one.
  const std::string name = "\u30BD\u0416\U0001F600\xED\xA0\x80";
  file("C:\\" + name);
  start();
  HKEY made = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, utf16(name).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                            nullptr, &made, nullptr),
            ERROR_SUCCESS);
  RegCloseKey(made);
  computer().registry().setSecurity("HKEY_CURRENT_USER\\" + name, parseSddl("D:(A;;KA;;;BA)"));
  computer().drives().records().setSecurity("C:\\" + name, parseSddl("D:(A;;FA;;;BA)"));
  EXPECT_NE(SetFileAttributesW(utf16("C:\\" + name).c_str(), FILE_ATTRIBUTE_HIDDEN), FALSE);
  restart();
  EXPECT_EQ(computer().registry().securities().size(), 1U);
  EXPECT_TRUE(computer().drives().records().hasSecurity("c:\\" + name));
  EXPECT_EQ(GetFileAttributesW(utf16("C:\\" + name).c_str()), FILE_ATTRIBUTE_HIDDEN);
}

TEST_F(MachineTest, TheListOfADeletedKeyLeavesTheFile) {
  key(vendorKey);
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Other)");
  security(vendorKey, "D:(A;;KA;;;BA)");
  security(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Other)", "D:(A;;KA;;;BA)");
  start();
  HKEY software = nullptr;
  ASSERT_EQ(
      RegOpenKeyExW(HKEY_LOCAL_MACHINE, u"SOFTWARE", 0, KEY_READ | KEY_WOW64_64KEY, &software),
      ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteKeyW(software, u"Vendor"), ERROR_SUCCESS);
  RegCloseKey(software);
  restart();
  EXPECT_EQ(machineFolder().read("security.txt"),
            "HKEY_LOCAL_MACHINE\\SOFTWARE\\Other\tD:(A;;KA;;;BA)\n");
}

TEST_F(MachineTest, ReadsAttributesAndListsOfFilesByTheirTruePaths) {
  file(R"(C:\Windows\System32\a.dll)");
  attributes(R"(c:\windows\SYSTEM32\a.dll)", FILE_ATTRIBUTE_READONLY);
  security(R"(C:\Windows\System32\a.dll)", "D:");
  start();
  EXPECT_EQ(GetFileAttributesW(u"C:\\Windows\\Sysnative\\a.dll"), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(SetFileAttributesW(u"C:\\Windows\\Sysnative\\a.dll", 32), FALSE);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
}

TEST_F(MachineTest, TheOneBeforeIsInForceAgain) {
  EXPECT_EQ(Machine::current(), nullptr);
  Machine& first = start();
  EXPECT_EQ(Machine::current(), &first);
  {
    const TemporaryFolder folder;
    folder.write("registry.reg", emptyRegistry);
    const auto second = Machine::open(folder.path());
    const Running secondInForce(*second);
    EXPECT_EQ(Machine::current(), second.get());
  }
  EXPECT_EQ(Machine::current(), &first);
  stop();
  EXPECT_EQ(Machine::current(), nullptr);
  EXPECT_EQ(GetFileAttributesW(u"C:\\"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NOT_READY));
}

}  // namespace
}  // namespace zelvreg::machine
