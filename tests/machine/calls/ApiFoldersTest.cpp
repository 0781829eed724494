#include <gtest/gtest.h>
#include <sys/stat.h>
#include <windows.h>

#include <string>

#include "machine/files/Drives.h"
#include "support/MachineFixture.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

DWORD error(LONG code) { return static_cast<DWORD>(code); }

class ApiFoldersTest : public zelvreg::fixture::MachineFixture {};

TEST_F(ApiFoldersTest, DeletesAFileAndNothingElse) {
  file(R"(C:\Dir\a.txt)");
  start();
  EXPECT_NE(DeleteFileW(u"C:\\DIR\\A.TXT"), FALSE);
  EXPECT_FALSE(has(R"(C:\Dir\a.txt)"));
  EXPECT_EQ(DeleteFileW(u"C:\\Dir\\a.txt"), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(DeleteFileW(u"C:\\Dir"), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_ACCESS_DENIED));
}

TEST_F(ApiFoldersTest, AReadOnlyFileIsNotDeleted) {
  file(R"(C:\a.txt)");
  attributes(R"(C:\a.txt)", FILE_ATTRIBUTE_READONLY);
  start();
  EXPECT_EQ(DeleteFileW(u"C:\\a.txt"), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_ACCESS_DENIED));
  EXPECT_NE(SetFileAttributesW(u"C:\\a.txt", FILE_ATTRIBUTE_NORMAL), FALSE);
  EXPECT_NE(DeleteFileW(u"C:\\a.txt"), FALSE);
}

TEST_F(ApiFoldersTest, DeletingTakesTheFilesOwnListOrItsFolders) {
  file(R"(C:\f\a.txt)");
  file(R"(C:\g\a.txt)");
  security(R"(C:\f\a.txt)", "D:(A;;FR;;;BU)");
  security(R"(C:\g\a.txt)", "D:(A;;FR;;;BU)");
  security(R"(C:\g)", "D:(A;;FR;;;BU)");
  start();
  EXPECT_EQ(DeleteFileW(u"C:\\g\\a.txt"), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_ACCESS_DENIED));
  EXPECT_NE(DeleteFileW(u"C:\\f\\a.txt"), FALSE);
}

TEST_F(ApiFoldersTest, MovesAFileAndReplacesOnlyWhenTold) {
  file(R"(C:\a.txt)", "a");
  file(R"(C:\b.txt)", "b");
  start();
  EXPECT_EQ(MoveFileExW(u"C:\\a.txt", u"C:\\b.txt", 0), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_ALREADY_EXISTS));
  EXPECT_NE(
      MoveFileExW(u"C:\\A.TXT", u"C:\\B.TXT", MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH),
      FALSE);
  EXPECT_EQ(content(R"(C:\b.txt)"), "a");
  EXPECT_FALSE(has(R"(C:\a.txt)"));
  EXPECT_EQ(MoveFileExW(u"C:\\a.txt", u"C:\\c.txt", 0), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(MoveFileExW(u"C:\\b.txt", u"C:\\no\\c.txt", 0), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_PATH_NOT_FOUND));
}

TEST_F(ApiFoldersTest, AReplacedFileKeepsWhoMayReadItOnThisSystem) {
  file(R"(C:\a.txt)", "a");
  file(R"(C:\b.txt)", "b");
  const std::filesystem::path replaced = machineFolder().path() / "C/b.txt";
  ASSERT_EQ(chmod(replaced.c_str(), 0600), 0);
  start();
  EXPECT_NE(MoveFileExW(u"C:\\a.txt", u"C:\\b.txt", MOVEFILE_REPLACE_EXISTING), FALSE);
  struct stat status {};
  ASSERT_EQ(stat(replaced.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0600U);
  EXPECT_EQ(content(R"(C:\b.txt)"), "a");
}

TEST_F(ApiFoldersTest, AMoveToAnotherSpellingRenames) {
  file(R"(C:\name.txt)", "a");
  start();
  EXPECT_NE(MoveFileExW(u"C:\\name.txt", u"C:\\NAME.txt", 0), FALSE);
  EXPECT_EQ(content(R"(C:\NAME.txt)"), "a");
  EXPECT_FALSE(has(R"(C:\name.txt)"));
}

TEST_F(ApiFoldersTest, MovesAFolderWithItsRecordsButNotToAnotherDrive) {
  file(R"(C:\f\a.txt)");
  attributes(R"(C:\f\a.txt)", FILE_ATTRIBUTE_HIDDEN);
  folder(R"(D:\x)");
  start();
  EXPECT_NE(MoveFileExW(u"C:\\f", u"C:\\g", 0), FALSE);
  EXPECT_EQ(GetFileAttributesW(u"C:\\g\\a.txt"), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ(MoveFileExW(u"C:\\g", u"D:\\g", 0), FALSE);
  EXPECT_EQ(GetLastError(), 17U);
}

TEST_F(ApiFoldersTest, MakesAFolderInOneThatIsThere) {
  start();
  EXPECT_NE(CreateDirectoryW(u"C:\\new", nullptr), FALSE);
  EXPECT_EQ(GetFileAttributesW(u"c:\\NEW\\"), FILE_ATTRIBUTE_DIRECTORY);
  EXPECT_EQ(CreateDirectoryW(u"C:\\NEW", nullptr), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_ALREADY_EXISTS));
  EXPECT_EQ(CreateDirectoryW(u"C:\\no\\new", nullptr), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_PATH_NOT_FOUND));
}

TEST_F(ApiFoldersTest, TellsAttributesAndWhyThereAreNone) {
  file(R"(C:\Windows\a.txt)");
  start();
  EXPECT_EQ(GetFileAttributesW(u"C:\\windows\\A.TXT."), FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_EQ(GetFileAttributesW(u"C:\\windows"), FILE_ATTRIBUTE_DIRECTORY);
  EXPECT_EQ(GetFileAttributesW(u"C:\\windows\\b.txt"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetLastError(), error(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(GetFileAttributesW(u"C:\\windows\\*.txt"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_NAME));
  EXPECT_EQ(GetFileAttributesW(u"Q:\\"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetLastError(), error(ERROR_PATH_NOT_FOUND));
  EXPECT_EQ(GetFileAttributesW(nullptr), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetFileAttributesW(u""), INVALID_FILE_ATTRIBUTES);
}

TEST_F(ApiFoldersTest, TellsWhatADriveIs) {
  folder(R"(C:\f)");
  start().drives().setType(u'z', DRIVE_REMOTE);
  for (const LPCWSTR path : {u"C:\\", u"c:/", u"C:", u"C:\\f\\"}) {
    EXPECT_EQ(GetDriveTypeW(path), DRIVE_FIXED) << utf8(path);
  }
  for (const LPCWSTR path : {u"Q:\\", u"1:\\", u"\u0416:\\", u"C:\\g\\", u""}) {
    EXPECT_EQ(GetDriveTypeW(path), DRIVE_NO_ROOT_DIR) << utf8(path);
  }
  EXPECT_EQ(GetDriveTypeW(u"z:\\"), DRIVE_REMOTE);
  EXPECT_EQ(GetDriveTypeW(nullptr), DRIVE_UNKNOWN);
}

TEST_F(ApiFoldersTest, SettingArchiveClearsTheOthers) {
  file(R"(C:\a.dll)");
  attributes(R"(C:\a.dll)", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_SYSTEM);
  start();
  EXPECT_NE(SetFileAttributesW(u"C:\\a.dll", FILE_ATTRIBUTE_ARCHIVE), FALSE);
  EXPECT_EQ(GetFileAttributesW(u"C:\\a.dll"), FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_EQ(SetFileAttributesW(u"C:\\no.dll", FILE_ATTRIBUTE_ARCHIVE), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_FILE_NOT_FOUND));
  restart();
  EXPECT_EQ(machineFolder().read("attributes.txt"), "");
}

TEST_F(ApiFoldersTest, AttributesAreWrittenWhenTheMachineIsSavedAndNotBefore) {
  file(R"(C:\a.txt)");
  start();
  EXPECT_NE(SetFileAttributesW(u"C:\\a.txt", FILE_ATTRIBUTE_HIDDEN), FALSE);
  stop();
  EXPECT_FALSE(machineFolder().has("attributes.txt"));
}

TEST_F(ApiFoldersTest, EachCallCanBeMadeToFail) {
  file(R"(C:\a.txt)");
  FaultPlan& faults = start().faults();
  for (const ApiCall call : {ApiCall::DeleteFile, ApiCall::MoveFile, ApiCall::CreateDirectory,
                             ApiCall::GetFileAttributes, ApiCall::SetFileAttributes}) {
    faults.fail(call, 1, ERROR_SHARING_VIOLATION);
  }
  SetLastError(0);
  EXPECT_EQ(DeleteFileW(u"C:\\a.txt"), FALSE);
  EXPECT_EQ(MoveFileExW(u"C:\\a.txt", u"C:\\b.txt", 0), FALSE);
  EXPECT_EQ(CreateDirectoryW(u"C:\\b", nullptr), FALSE);
  EXPECT_EQ(GetFileAttributesW(u"C:\\a.txt"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(SetFileAttributesW(u"C:\\a.txt", 1), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_SHARING_VIOLATION));
  EXPECT_TRUE(has(R"(C:\a.txt)"));
}

}  // namespace
}  // namespace zelvreg::machine
