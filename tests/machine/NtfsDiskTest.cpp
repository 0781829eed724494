// A small disk of NTFS with a hive in it: what Windows keeps of a file must be there after a save.
#include <gtest/gtest.h>
#include <sys/xattr.h>

#include <map>
#include <memory>
#include <vector>

#include "evidence/Reasons.h"
#include "evidence/TextLook.h"
#include "machine/AdoptedProcesses.h"
#include "machine/OfflineDiskFixture.h"
#include "machine/ProgramRun.h"
#include "machine/files/DiskAttributes.h"
#include "machine/files/Drives.h"
#include "machine/security/Security.h"
#include "runtime/Directory.h"
#include "runtime/FileSystemObject.h"
#include "runtime/ShortNames.h"
#include "unicode/Unicode.h"

namespace zelvreg::fixture {
namespace {

class NtfsDiskTest : public OfflineDiskTest {
 protected:
  void SetUp() override {
    image = (outside.path() / "disk").string();
    outside.write("disk", "");
    std::filesystem::resize_file(image, 8'000'000);
    // Told where it begins, since a file has no table of partitions.
    isMounted =
        run({"mkntfs", "-F", "-Q", "-q", "-s", "512", "-p", "0", "-H", "1", "-S", "1", image}) &&
        run({"ntfs-3g", image, disk.path().string()});
    if (!isMounted) {
      GTEST_SKIP() << "no disk of NTFS can be made and mounted here (ntfs-3g, /dev/fuse)";
    }
    hive(anna).text(R"(Software\Vendor)", "x", "old");
    hive(software).text(R"(Vendor)", "x", "old");
  }

  void TearDown() override {
    computer.reset();
    if (isMounted) {
      unmount();
    }
  }

  void unmount() const {
    EXPECT_TRUE(run({"fusermount3", "-u", disk.path().string()}) ||
                run({"umount", disk.path().string()}));
    AdoptedProcesses::waitForAll();
  }

  void mountAnew(const std::string& options) const {
    unmount();
    ASSERT_TRUE(run({"ntfs-3g", "-o", options, image, disk.path().string()}));
  }

  [[nodiscard]] std::string attribute(const std::string& file, const char* name) const {
    std::string value(4096, '\0');
    const ssize_t size = getxattr((disk.path() / file).c_str(), name, value.data(), value.size());
    value.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    return value;
  }

  [[nodiscard]] std::string listOf(const std::string& file) const {
    const std::string bytes = attribute(file, "system.ntfs_acl");
    return bytes.empty() ? "" : machine::formatSddl(machine::readDescriptor(bytes.data()));
  }

  void set(const std::string& file, const char* name, const std::string& value) const {
    ASSERT_EQ(setxattr((disk.path() / file).c_str(), name, value.data(), value.size(), 0), 0)
        << name;
  }

  // What a path of the disk leads to.
  [[nodiscard]] std::string seen(const std::string& path) const {
    const std::u16string text = utf16(path);
    if (GetFileAttributesW(text.c_str()) != INVALID_FILE_ATTRIBUTES) return "there";
    return computer->drives().isUnknown(text) ? "unknown" : "missing";
  }

  const AdoptedProcesses adopted;
  const TemporaryFolder outside;
  std::string image;
  bool isMounted = false;
};

TEST_F(NtfsDiskTest, ADiskThatIsMountedForReadingIsScannedAndRefusedBeforeARepair) {
  mountAnew("ro");
  open();
  EXPECT_TRUE(computer->damagedHives().empty());
  ASSERT_EQ(computer->uncleanHives().size(), 2U);
  EXPECT_NE(computer->uncleanHives()[0].find("mounted for reading only"), std::string::npos);
  registry().erase(key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)"));
  EXPECT_NE(refusal().find("mounted for reading only"), std::string::npos);
}

TEST_F(NtfsDiskTest, AFileHasTheAttributesOfTheDiskUntilOthersAreAskedFor) {
  using namespace std::string_literals;
  disk.write("hidden.dll", "bytes");
  disk.write("plain.dll", "bytes");
  set("hidden.dll", machine::ntfsAttribute, "\x27\0\0\0"s);
  open();
  const machine::Running running(*computer);
  constexpr DWORD all = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                        FILE_ATTRIBUTE_ARCHIVE;
  EXPECT_EQ(GetFileAttributesW(u"C:\\HIDDEN.dll"), all);
  EXPECT_EQ(GetFileAttributesW(u"C:\\Windows") & ~FILE_ATTRIBUTE_ARCHIVE, FILE_ATTRIBUTE_DIRECTORY);
  EXPECT_EQ(Dir("C:\\hidden.dll"), "");
  EXPECT_EQ(Dir("C:\\plain.dll"), "plain.dll");
  EXPECT_NE(SetFileAttributesW(u"C:\\hidden.dll", FILE_ATTRIBUTE_ARCHIVE), FALSE);
  EXPECT_EQ(GetFileAttributesW(u"C:\\hidden.dll"), FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_EQ(Dir("C:\\hidden.dll"), "hidden.dll");
}

// What Windows keeps of a file or folder that is more than its name: what leads elsewhere is a
// text for Windows and one to be shown, in UTF-16, each with where it lies and how long it is.
std::string number(std::size_t value, std::size_t bytes) {
  std::string text;
  for (std::size_t index = 0; index < bytes; ++index) {
    text += static_cast<char>(value >> 8 * index & 0xFF);
  }
  return text;
}

std::string reparse(std::uint32_t tag, const std::string& content) {
  return number(tag, 4) + number(content.size(), 4) + content;
}

std::string wide(const std::string& text) {
  std::string units;
  for (const char character : text) {
    units += {character, '\0'};
  }
  return units;
}

std::string leadingTo(const std::string& target, const std::string& flags) {
  const std::size_t size = 2 * target.size();
  return number(0, 2) + number(size, 2) + number(size + 2, 2) + number(size, 2) + flags +
         wide(target + '\0' + target + '\0');
}

std::string junction(const std::string& target) {
  return reparse(0xA0000003, leadingTo(target, ""));
}

std::string symbolicLink(const std::string& target, bool isRelative) {
  return reparse(0xA000000C, leadingTo(target, number(isRelative ? 1 : 0, 4)));
}

constexpr const char* reparseData = "system.ntfs_reparse_data";

TEST_F(NtfsDiskTest, WhatOnlyWindowsCanReadIsThereAndWhatIsBelowItIsUnknown) {
  // Compressed by the system, kept once for many files, in a cloud, and what nobody knows.
  const std::map<std::string, std::string> files{
      {"packed.dll",
       reparse(0x80000017, number(1, 4) + number(2, 4) + number(1, 4) + number(0, 4))},
      {"once.dll", reparse(0x80000013, std::string(16, '\0'))},
      {"cloud.dll", reparse(0x9000601A, std::string(16, '\0'))},
      {"other.dll", reparse(0x80001234, std::string(16, '\0'))}};
  for (const auto& [name, data] : files) {
    disk.write(name, "bytes");
    set(name, reparseData, data);
  }
  std::filesystem::create_directory(disk.path() / "Cloud");
  set("Cloud", reparseData, reparse(0x9000001A, std::string(16, '\0')));
  mountAnew("rw");
  open();
  const machine::Running running(*computer);
  for (const auto& [name, data] : files) {
    EXPECT_EQ(seen("C:\\" + name), "there") << name;
  }
  EXPECT_EQ(seen("C:\\CLOUD"), "there");
  EXPECT_EQ(seen("C:\\Cloud\\below.exe"), "unknown");
}

TEST_F(NtfsDiskTest, ALinkIsFollowedAsLongAsItStaysOnItsDrive) {
  disk.write("New/a.txt", "bytes");
  disk.write("New/inner/b.txt", "bytes");
  const std::map<std::string, std::string> inside{
      {"Junction", junction("\\??\\C:\\New")},
      {"Full", symbolicLink("\\??\\C:\\New", false)},
      {"Relative", symbolicLink("New", true)},
      {"New/inner/Up", symbolicLink("..\\..\\New", true)}};
  const std::map<std::string, std::string> outside{
      {"Volume", junction("\\??\\Volume{12345678-1234-1234-1234-123456789abc}\\")},
      // To folders of the same name on another drive, the one of the link itself among them.
      {"Drive", junction("\\??\\D:\\New")},
      {"Moved", junction("\\??\\D:\\Moved")},
      {"Share", symbolicLink("\\??\\UNC\\server\\share", false)},
      {"Above", symbolicLink("..\\..\\..\\..\\etc", true)},
      {"Nowhere", symbolicLink("gone\\New", true)}};
  for (const auto* links : {&inside, &outside}) {
    for (const auto& [name, data] : *links) {
      std::filesystem::create_directory(disk.path() / name);
      set(name, reparseData, data);
    }
  }
  mountAnew("rw");
  open();
  const machine::Running running(*computer);
  for (const auto& [name, data] : inside) {
    EXPECT_EQ(seen("C:\\" + name + "\\A.TXT"), "there") << name;
    EXPECT_EQ(seen("C:\\" + name + "\\c.txt"), "missing") << name;
  }
  for (const auto& [name, data] : outside) {
    EXPECT_EQ(seen("C:\\" + name + "\\passwd"), "unknown")
        << std::filesystem::read_symlink(disk.path() / name);
  }
}

// The driver mounts such a disk for reading only, whatever it is asked.
TEST_F(NtfsDiskTest, ADiskOfAHibernatedWindowsIsNotWritten) {
  disk.write("hiberfil.sys", "hibr" + std::string(4092, '\0'));
  mountAnew("rw");
  open();
  ASSERT_EQ(computer->notices().size(), 1U);
  EXPECT_NE(computer->notices()[0].find("hibernated"), std::string::npos);
  registry().erase(key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)"));
  EXPECT_NE(refusal().find("hibernated"), std::string::npos);
}

// Full control for SYSTEM and Administrators and nobody else, owned by Administrators, as a
// security descriptor in one piece.
std::string closedList() {
  using namespace std::string_literals;
  const std::string system = "\1\1\0\0\0\0\0\5\x12\0\0\0"s;
  const std::string administrators = "\1\2\0\0\0\0\0\5\x20\0\0\0\x20\2\0\0"s;
  const std::string all = "\xFF\1\x1F\0"s;
  const std::string entries = "\0\0\x14\0"s + all + system + "\0\0\x18\0"s + all + administrators;
  const std::string list = "\2\0\x34\0\2\0\0\0"s + entries;
  return "\1\0\4\x80\x14\0\0\0\x24\0\0\0\0\0\0\0\x34\0\0\0"s + administrators + administrators +
         list;
}

TEST_F(NtfsDiskTest, AHiveAndItsBackupKeepTheirAccessListAttributesAndBirth) {
  const std::string hiddenAndSystem = {0x26, 0, 0, 0};
  set(anna, "system.ntfs_acl", closedList());
  set(anna, "system.ntfs_attrib", hiddenAndSystem);
  set(anna, "user.note", "mine");
  const std::string list = attribute(anna, "system.ntfs_acl");
  ASSERT_EQ(list, closedList());
  const std::string birth = attribute(anna, "system.ntfs_crtime");
  const std::string old = disk.read(anna);
  open();
  setValue(R"(HKEY_CURRENT_USER\Software\Vendor)", u"x", REG_BINARY, "new");
  setValue(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)", u"x", REG_BINARY, "new");
  ASSERT_EQ(refusal(), "");
  EXPECT_FALSE(disk.read(anna) == old);
  EXPECT_TRUE(disk.read(anna + std::string(".bak")) == old);
  for (const std::string& file : {std::string(anna), anna + std::string(".bak")}) {
    EXPECT_TRUE(attribute(file, "system.ntfs_acl") == list) << file;
    EXPECT_EQ(attribute(file, "system.ntfs_attrib"), hiddenAndSystem) << file;
    EXPECT_EQ(attribute(file, "user.note"), "mine") << file;
    EXPECT_TRUE(attribute(file, "system.ntfs_crtime") == birth) << file;
  }
  // The driver keeps a replaced file under a name of its own as long as it is open.
  computer.reset();
  std::set<std::string> names;
  for (const auto& [name, bytes] : allFiles()) {
    names.insert(name);
  }
  EXPECT_EQ(names, (std::set<std::string>{anna, anna + std::string(".bak"), software,
                                          software + std::string(".bak")}));
}

TEST_F(NtfsDiskTest, WhatTheProgramMakesIsForAdministratorsAlone) {
  open();
  const machine::Running running(*computer);
  ASSERT_NE(CreateDirectoryW(u"C:\\kept", nullptr), FALSE);
  HANDLE file = CreateFileW(u"C:\\kept\\journal", GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(file, INVALID_HANDLE_VALUE);
  CloseHandle(file);
  EXPECT_EQ(listOf("kept"), "O:BAG:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)");
  EXPECT_EQ(listOf("kept/journal"), "O:BAG:BAD:P(A;;FA;;;SY)(A;;FA;;;BA)");
}

TEST_F(NtfsDiskTest, AHiveThatAnotherProgramHasReplacedIsNotWritten) {
  open();
  setValue(R"(HKEY_CURRENT_USER\Software\Vendor)", u"x", REG_BINARY, "new");
  disk.write("Users/Anna/other", "other");
  std::filesystem::rename(disk.path() / "Users/Anna/other", disk.path() / anna);
  EXPECT_NE(refusal(), "");
  EXPECT_EQ(disk.read(anna), "other");
}

TEST_F(NtfsDiskTest, AShortNameStandsForTheNameThatTheDriverTells) {
  disk.write("Program Files/Real Program/tool with a name.exe", "");
  set("Program Files", "system.ntfs_dos_name", "PROGRA~1");
  set("Program Files/Real Program/tool with a name.exe", "system.ntfs_dos_name", "TOOLWI~1.EXE");
  open();
  const machine::Running running(*computer);
  EXPECT_EQ(withLongNames("C:\\progra~1\\Real Program\\TOOLWI~1.EXE"),
            "C:\\Program Files\\Real Program\\tool with a name.exe");
  EXPECT_EQ(withLongNames("C:\\PROGRA~2\\x~1.exe"), "C:\\PROGRA~2\\x~1.exe");
  TextLook look(Shares::Refused, 1);
  EXPECT_EQ(
      reasonCodes(look.at("C:\\PROGRA~1\\Real Program\\TOOLWI~1.EXE /x", {}, Reading::Command)),
      "found");
  EXPECT_EQ(reasonCodes(look.at("C:\\PROGRA~1\\gone.exe", {}, Reading::Command)), "absent");
  EXPECT_EQ(reasonCodes(look.at("C:\\PROGRA~2\\gone.exe", {}, Reading::Command)),
            "absent parent-absent short-name");
}

TEST_F(NtfsDiskTest, NamesAreThoseThatWindowsKnows) {
  disk.write("Case/One.dll", "1");
  disk.write("Case/ONE.DLL", "2");
  disk.write("Case/Gr\u00FC\u00DFe.dll", "");
  disk.write("Case/con.dll", "");
  disk.write("Case/half\xED\xA0\x80.dll", "");  // of a character
  disk.write("Case/much.bin", "");
  std::filesystem::resize_file(disk.path() / "Case/much.bin", 1 << 30);
  disk.write("Case/streams.txt", "");
  set("Case/streams.txt", "user.second", "bytes");
  open();
  const machine::Running running(*computer);
  for (const char* name : {"one.dll", "ONE.dll", "GR\u00DC\u00DFE.DLL", "con.dll", "MUCH.BIN",
                           "HALF\xED\xA0\x80.dll", "streams.txt", "streams.txt.", "streams.txt "}) {
    EXPECT_EQ(seen(std::string("C:\\case\\") + name), "there") << name;
  }
  EXPECT_EQ(seen("C:\\Case\\two.dll"), "missing");
  // Only Windows could tell which streams a file has.
  EXPECT_EQ(seen("C:\\Case\\streams.txt:second"), "unknown");
  EXPECT_EQ(seen("C:\\Case\\streams.txt::$DATA"), "unknown");
  EXPECT_TRUE(fileSystemObject::fileExists("C:\\Case\\streams.txt:second", Shares::Refused));
  EXPECT_FALSE(fileSystemObject::fileExists("C:\\Case\\gone.txt:second", Shares::Refused));
  EXPECT_EQ(seen("C:\\Case\\gone.txt:second"), "missing");
}

}  // namespace
}  // namespace zelvreg::fixture
