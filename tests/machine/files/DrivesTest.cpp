#include "machine/files/Drives.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <optional>

#include "machine/TemporaryFolder.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

class DrivesTest : public ::testing::Test {
 protected:
  DrivesTest() {
    disk.makeFolder("C");
    settings.folders['C'] = disk.path() / "C";
    settings.programFolder = u"C:\\Program Files (x86)\\zelvreg";
  }

  Drives& drives() {
    if (!made) made.emplace(settings);
    return *made;
  }
  LONG errorOf(std::string_view path) { return drives().find(utf16(path)).error; }
  // Where a path leads, below the disk's folder.
  std::string leadsTo(std::string_view path) {
    const Place place = drives().find(utf16(path));
    if (!place.exists()) return "nowhere";
    return std::filesystem::path(place.file).lexically_relative(disk.path() / "C").string();
  }
  void link(const std::string& target, std::string_view name) {
    std::filesystem::create_symlink(target, disk.path() / name);
  }

  fixture::TemporaryFolder disk;
  DriveSettings settings;

 private:
  std::optional<Drives> made;
};

TEST_F(DrivesTest, FindsNamesInAnyCase) {
  disk.write("C/Windows/Fonts/Arial.ttf", "");
  EXPECT_EQ(leadsTo("c:\\WINDOWS\\fonts\\ARIAL.TTF"), "Windows/Fonts/Arial.ttf");
  EXPECT_EQ(leadsTo("C:/Windows/Fonts"), "Windows/Fonts");
  EXPECT_TRUE(drives().find(u"C:\\windows").isFolder);
  EXPECT_FALSE(drives().find(u"C:\\windows\\fonts\\arial.ttf").isFolder);
}

TEST_F(DrivesTest, APipeIsNoFileAndNobodyWaitsForIt) {
  disk.makeFolder("C");
  ASSERT_EQ(mkfifo((disk.path() / "C/pipe.txt").c_str(), 0600), 0);
  EXPECT_EQ(leadsTo("C:\\pipe.txt"), "nowhere");
  // There is something, so nobody may call it gone.
  EXPECT_EQ(errorOf("C:\\pipe.txt"), ERROR_ACCESS_DENIED);
}

// A driver of NTFS shows so what only Windows can read.
TEST_F(DrivesTest, WhatADriverCannotFollowIsThere) {
  disk.makeFolder("C");
  std::filesystem::create_symlink("unsupported reparse tag 0x80000017", disk.path() / "C/a.dll");
  EXPECT_EQ(errorOf("C:\\A.dll"), ERROR_SUCCESS);
  EXPECT_FALSE(drives().find(u"C:\\a.dll").isFolder);
  EXPECT_EQ(errorOf("C:\\a.dll\\b.txt"), ERROR_PATH_NOT_FOUND);
}

TEST_F(DrivesTest, PrefersTheNameAsWritten) {
  disk.write("C/a.txt", "");
  disk.write("C/A.TXT", "");
  EXPECT_EQ(leadsTo("C:\\a.txt"), "a.txt");
  EXPECT_EQ(leadsTo("C:\\A.TXT"), "A.TXT");
  EXPECT_EQ(leadsTo("C:\\A.txt"), "A.TXT");
}

TEST_F(DrivesTest, FindsNamesOfEveryScriptInAnyCase) {
  disk.write("C/gr\u00F6\u00DFe.txt", "");
  disk.write("C/Users/\u0418\u0432\u0430\u043D/app.exe", "");
  disk.write("C/\u30DD\u30B1\u30C3\u30C8.txt", "");
  EXPECT_EQ(errorOf("C:\\GR\u00D6\u00DFE.txt"), ERROR_SUCCESS);
  EXPECT_EQ(errorOf("C:\\Users\\\u0438\u0412\u0410\u041D\\App.exe"), ERROR_SUCCESS);
  EXPECT_EQ(errorOf("C:\\\u30DD\u30B1\u30C3\u30C8.TXT"), ERROR_SUCCESS);
  EXPECT_EQ(errorOf("C:\\\u30DD\u30B1\u30C3\u30C9.TXT"), ERROR_FILE_NOT_FOUND);
}

TEST_F(DrivesTest, FindsANameThatIsHalfOfACharacter) {
  disk.write("C/\xED\xA0\xBD", "");
  EXPECT_EQ(drives().find(u"C:\\\xD83D").file, (disk.path() / "C/\xED\xA0\xBD").string());
  EXPECT_EQ(drives().find(u"C:\\\xD83D\xDE00").error, ERROR_FILE_NOT_FOUND);
}

TEST_F(DrivesTest, ANameInOtherBytesThanUtf8StandsForNoFile) {
  disk.write("C/a\xFF", "");                      // of another character set
  disk.write("C/b\xED\xA0\xBD\xED\xB8\x80", "");  // both halves of a character, each by itself
  EXPECT_EQ(drives().namesIn(drives().find(u"C:\\"))->size(), 0U);
  EXPECT_NE(drives().find(u"C:\\a\uFFFD").error, ERROR_SUCCESS);
  EXPECT_NE(drives().find(u"C:\\b\U0001F600").error, ERROR_SUCCESS);
  link("a\xFF", "C/link");
  disk.write("C/a\uFFFD", "");
  EXPECT_EQ(drives().find(u"C:\\link").error, ERROR_CANT_RESOLVE_FILENAME);
}

TEST_F(DrivesTest, BesideANameInOtherBytesOnlyPlainNamesAreSurelyMissing) {
  settings.missingDrivesAreUnknown = true;
  disk.write("C/f/\xC4", "");
  disk.makeFolder("C/g");
  EXPECT_TRUE(drives().isUnknown(u"C:\\f\\\u00C4"));
  EXPECT_FALSE(drives().isUnknown(u"C:\\f\\A"));
  EXPECT_FALSE(drives().isUnknown(u"C:\\g\\\u00C4"));
}

TEST_F(DrivesTest, SaysWhetherTheFileOrAFolderIsMissing) {
  disk.write("C/a/b.txt", "");
  EXPECT_EQ(errorOf("C:\\a\\c.txt"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(errorOf("C:\\x\\c.txt"), ERROR_PATH_NOT_FOUND);
  EXPECT_EQ(errorOf("C:\\a\\b.txt\\c"), ERROR_PATH_NOT_FOUND);
  EXPECT_EQ(errorOf("C:\\a\\b.txt\\"), ERROR_INVALID_NAME);
  EXPECT_EQ(errorOf("C:\\a\\*"), ERROR_INVALID_NAME);
  EXPECT_EQ(errorOf(""), ERROR_PATH_NOT_FOUND);
}

TEST_F(DrivesTest, TellsWhereAMissingFileWouldBe) {
  disk.makeFolder("C/Folder");
  const Place place = drives().find(u"c:\\FOLDER\\New.txt");
  EXPECT_TRUE(place.canBeMade());
  EXPECT_EQ(place.path(), "C:\\Folder\\New.txt");
  EXPECT_EQ(place.file, place.folder() + "/New.txt");
}

TEST_F(DrivesTest, SeesWhatHappensToFoldersThatItKnows) {
  disk.write("C/a/b/old.txt", "");
  ASSERT_EQ(leadsTo("C:\\a\\b\\old.txt"), "a/b/old.txt");
  ASSERT_EQ(errorOf("C:\\a\\b\\new.txt"), ERROR_FILE_NOT_FOUND);
  disk.write("C/a/b/new.txt", "");
  EXPECT_EQ(leadsTo("C:\\a\\b\\new.txt"), "a/b/new.txt");
  std::filesystem::rename(disk.path() / "C/a/b", disk.path() / "C/a/B");
  EXPECT_EQ(leadsTo("C:\\a\\b\\new.txt"), "a/B/new.txt");
  disk.write("C/other/b/old.txt", "");
  std::filesystem::rename(disk.path() / "C/a", disk.path() / "C/gone");
  EXPECT_EQ(errorOf("C:\\a\\b\\new.txt"), ERROR_PATH_NOT_FOUND);
  std::filesystem::rename(disk.path() / "C/other", disk.path() / "C/a");
  EXPECT_EQ(errorOf("C:\\a\\b\\new.txt"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(leadsTo("C:\\a\\b\\old.txt"), "a/b/old.txt");
}

TEST_F(DrivesTest, FoldersWhoseNamesDifferInCaseAloneStayApart) {
  disk.write("C/Tools/a/one.txt", "");
  disk.write("C/TOOLS/a/two.txt", "");
  EXPECT_EQ(leadsTo("C:\\Tools\\a\\one.txt"), "Tools/a/one.txt");
  EXPECT_EQ(leadsTo("C:\\TOOLS\\a\\two.txt"), "TOOLS/a/two.txt");
  EXPECT_EQ(errorOf("C:\\TOOLS\\a\\one.txt"), ERROR_FILE_NOT_FOUND);
}

TEST_F(DrivesTest, AKnownFolderBehindALinkIsReachedThroughTheLink) {
  disk.write("C/first/f/x.txt", "");
  disk.write("C/second/f/y.txt", "");
  link("first", "C/link");
  ASSERT_EQ(leadsTo("C:\\link\\f\\x.txt"), "first/f/x.txt");
  std::filesystem::remove(disk.path() / "C/link");
  link("second", "C/link");
  EXPECT_EQ(leadsTo("C:\\link\\f\\y.txt"), "second/f/y.txt");
  EXPECT_EQ(errorOf("C:\\link\\f\\x.txt"), ERROR_FILE_NOT_FOUND);
}

TEST_F(DrivesTest, DropsBlanksAndDotsAtTheEnd) {
  disk.write("C/a/b.txt", "");
  EXPECT_EQ(leadsTo("C:\\a \\b.txt. "), "a/b.txt");
  EXPECT_EQ(leadsTo("C:\\x\\..\\a\\.\\b.txt"), "a/b.txt");
}

TEST_F(DrivesTest, TheRootOfADriveIsAFolder) {
  const Place root = drives().find(u"C:\\");
  EXPECT_TRUE(root.exists());
  EXPECT_TRUE(root.isFolder);
  EXPECT_EQ(root.path(), "C:\\");
}

TEST_F(DrivesTest, TakesAPathWithoutADriveFromTheProgramsFolder) {
  disk.write("C/Program Files (x86)/zelvreg/lang/x.lng", "");
  EXPECT_EQ(leadsTo("lang\\x.lng"), "Program Files (x86)/zelvreg/lang/x.lng");
}

TEST_F(DrivesTest, A32BitProcessSeesItsOwnSystemFolder) {
  disk.write("C/Windows/System32/true.dll", "");
  disk.write("C/Windows/SysWOW64/other.dll", "");
  EXPECT_EQ(leadsTo("C:\\WINDOWS\\system32\\other.dll"), "Windows/SysWOW64/other.dll");
  EXPECT_EQ(leadsTo("C:\\windows\\System32\\true.dll"), "nowhere");
  EXPECT_EQ(leadsTo("C:\\Windows\\sysnative\\true.dll"), "Windows/System32/true.dll");
  EXPECT_EQ(leadsTo("C:\\Windows\\SysWOW64\\other.dll"), "Windows/SysWOW64/other.dll");
  EXPECT_EQ(leadsTo("C:\\x\\..\\Windows\\Sysnative"), "Windows/System32");
  EXPECT_TRUE(drives().findTrue(u"C:\\Windows\\System32\\true.dll").exists());
}

TEST_F(DrivesTest, On32BitsTheSystemFolderIsItself) {
  settings.is64Bit = false;
  disk.write("C/Windows/System32/true.dll", "");
  EXPECT_EQ(leadsTo("C:\\Windows\\System32\\true.dll"), "Windows/System32/true.dll");
  EXPECT_EQ(leadsTo("C:\\Windows\\Sysnative\\true.dll"), "nowhere");
}

TEST_F(DrivesTest, FollowsALinkInsideTheDrive) {
  disk.write("C/Real/a.txt", "");
  link("Real", "C/Relative");
  link((disk.path() / "C/Real").string(), "C/Absolute");
  link("../C/Real", "C/OutAndIn");
  link("Relative/a.txt", "C/chain.txt");
  disk.makeFolder("C/deep");
  link("../Real/a.txt", "C/deep/up.txt");
  EXPECT_EQ(leadsTo("C:\\relative\\A.TXT"), "Real/a.txt");
  EXPECT_EQ(leadsTo("C:\\absolute\\a.txt"), "Real/a.txt");
  EXPECT_EQ(leadsTo("C:\\chain.txt"), "Real/a.txt");
  EXPECT_EQ(leadsTo("C:\\deep\\up.txt"), "Real/a.txt");
  EXPECT_EQ(leadsTo("C:\\OutAndIn\\a.txt"), "nowhere");
}

TEST_F(DrivesTest, NeverFollowsALinkThatLeavesTheDrive) {
  disk.write("secret/a.txt", "");
  disk.makeFolder("C/deep");
  link("/", "C/root");
  link("..", "C/up");
  link("../../secret/a.txt", "C/deep/file.txt");
  link((disk.path() / "secret").string(), "C/absolute");
  link("absolute/a.txt", "C/chain.txt");
  link((disk.path() / "C").string() + "/../secret", "C/tricky");
  disk.makeFolder("C2");
  disk.write("C2/a.txt", "");
  link((disk.path() / "C2").string(), "C/prefix");
  for (const char* path :
       {"C:\\root", "C:\\root\\etc", "C:\\up", "C:\\up\\secret\\a.txt", "C:\\deep\\file.txt",
        "C:\\absolute\\a.txt", "C:\\chain.txt", "C:\\tricky\\a.txt", "C:\\prefix\\a.txt"}) {
    EXPECT_EQ(errorOf(path), ERROR_CANT_RESOLVE_FILENAME) << path;
  }
}

TEST_F(DrivesTest, ALinkInACircleOrToNothingCannotBeResolved) {
  link("b", "C/a");
  link("a", "C/b");
  link("nothing", "C/broken");
  link("nothing/deep", "C/brokenBelow");
  for (const char* path : {"C:\\a", "C:\\broken", "C:\\broken\\file", "C:\\brokenBelow"}) {
    EXPECT_EQ(errorOf(path), ERROR_CANT_RESOLVE_FILENAME) << path;
  }
}

TEST_F(DrivesTest, WhatIsMissingBehindALinkThatLeadsSomewhereIsMissing) {
  disk.makeFolder("C/Real");
  link("Real", "C/link");
  EXPECT_EQ(errorOf("C:\\link\\file"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(errorOf("C:\\link\\folder\\file"), ERROR_PATH_NOT_FOUND);
}

TEST_F(DrivesTest, TheDrivesFolderItselfMayBeALink) {
  disk.write("elsewhere/a.txt", "");
  link("elsewhere", "D");
  settings.folders['D'] = disk.path() / "D";
  EXPECT_EQ(errorOf("D:\\A.TXT"), ERROR_SUCCESS);
}

TEST_F(DrivesTest, SeesWhatChangesBetweenTwoQuestions) {
  EXPECT_EQ(errorOf("C:\\a.txt"), ERROR_FILE_NOT_FOUND);
  disk.write("C/a.txt", "");
  drives().changed((disk.path() / "C").string());
  EXPECT_EQ(errorOf("C:\\a.txt"), ERROR_SUCCESS);
  std::filesystem::remove(disk.path() / "C/a.txt");
  drives().changed((disk.path() / "C").string());
  EXPECT_EQ(errorOf("C:\\a.txt"), ERROR_FILE_NOT_FOUND);
}

TEST_F(DrivesTest, ADriveWithoutAFolderIsNoDrive) {
  EXPECT_EQ(errorOf("D:\\a.txt"), ERROR_PATH_NOT_FOUND);
  EXPECT_FALSE(drives().isUnknown(u"D:\\a.txt"));
}

TEST_F(DrivesTest, OnADiskADriveThatWasNotGivenIsUnknown) {
  settings.missingDrivesAreUnknown = true;
  link("/mnt/other", "C/junction");
  EXPECT_EQ(errorOf("D:\\a.txt"), ERROR_NOT_READY);
  EXPECT_TRUE(drives().isUnknown(u"D:\\a.txt"));
  EXPECT_TRUE(drives().isUnknown(u"C:\\junction\\a.txt"));
  EXPECT_FALSE(drives().isUnknown(u"C:\\a.txt"));
  EXPECT_FALSE(drives().isUnknown(u"C:\\*"));
  EXPECT_FALSE(drives().isUnknown(u""));
}

}  // namespace
}  // namespace zelvreg::machine
