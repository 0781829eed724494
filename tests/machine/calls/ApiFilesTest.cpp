#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

#include "machine/files/Drives.h"
#include "machine/files/OpenFiles.h"
#include "machine/security/Security.h"
#include "support/MachineFixture.h"

namespace zelvreg::machine {
namespace {

DWORD error(LONG code) { return static_cast<DWORD>(code); }

class ApiFilesTest : public zelvreg::fixture::MachineFixture {
 protected:
  static HANDLE open(const char16_t* path, DWORD access, DWORD disposition, DWORD flags = 0) {
    return CreateFileW(path, access, 0, nullptr, disposition, flags, nullptr);
  }
  // Opens and closes; ERROR_SUCCESS or why not.
  static DWORD tryOpen(const char16_t* path, DWORD access, DWORD disposition, DWORD flags = 0) {
    const HANDLE handle = open(path, access, disposition, flags);
    if (handle == INVALID_HANDLE_VALUE) return GetLastError();
    CloseHandle(handle);
    return error(ERROR_SUCCESS);
  }
  static std::string readAll(const char16_t* path) {
    std::array<char, 64> buffer{};
    DWORD size = 0;
    const HANDLE handle = open(path, GENERIC_READ, OPEN_EXISTING);
    EXPECT_NE(ReadFile(handle, buffer.data(), buffer.size(), &size, nullptr), FALSE);
    CloseHandle(handle);
    return {buffer.data(), size};
  }
  static void writeAll(HANDLE handle, std::string_view text) {
    DWORD written = 0;
    EXPECT_NE(WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr),
              FALSE);
    EXPECT_EQ(written, text.size());
    CloseHandle(handle);
  }
};

TEST_F(ApiFilesTest, WritesAndReadsAFile) {
  start();
  const HANDLE handle = open(u"C:\\new.txt", GENERIC_WRITE, CREATE_NEW);
  ASSERT_NE(handle, INVALID_HANDLE_VALUE);
  EXPECT_NE(FlushFileBuffers(handle), FALSE);
  writeAll(handle, "hello");
  EXPECT_EQ(readAll(u"c:/NEW.TXT"), "hello");
  EXPECT_EQ(content(R"(C:\new.txt)"), "hello");
  EXPECT_EQ(computer().openFiles().count(), 0U);
}

TEST_F(ApiFilesTest, AFileCreatedWithAListHasItAndIsClosedToOthers) {
  start();
  Bytes list = selfRelative(parseSddl("D:P(A;;FA;;;BA)"), DACL_SECURITY_INFORMATION);
  const SECURITY_ATTRIBUTES given{sizeof given, list.data(), FALSE};
  ASSERT_NE(CreateDirectoryW(u"C:\\own", &given), FALSE);
  const HANDLE made =
      CreateFileW(u"C:\\own\\a.txt", GENERIC_WRITE, 0, &given, CREATE_NEW, 0, nullptr);
  ASSERT_NE(made, INVALID_HANDLE_VALUE);
  writeAll(made, "x");
  for (const char* path : {"C:\\own", "C:\\own\\a.txt"}) {
    EXPECT_EQ(formatSddl(computer().drives().records().security(path)), "D:P(A;;FA;;;BA)");
  }
  namespace fs = std::filesystem;
  constexpr fs::perms ofOthers = fs::perms::group_all | fs::perms::others_all;
  for (const char* path : {"C/own", "C/own/a.txt"}) {
    EXPECT_EQ(fs::status(machineFolder().path() / path).permissions() & ofOthers, fs::perms::none);
  }
}

TEST_F(ApiFilesTest, EachDispositionDoesItsOwn) {
  file(R"(C:\old.txt)", "old");
  start();
  EXPECT_EQ(tryOpen(u"C:\\old.txt", GENERIC_WRITE, CREATE_NEW), error(ERROR_FILE_EXISTS));
  EXPECT_EQ(tryOpen(u"C:\\no.txt", GENERIC_READ, OPEN_EXISTING), error(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(tryOpen(u"C:\\no\\x.txt", GENERIC_READ, OPEN_EXISTING), error(ERROR_PATH_NOT_FOUND));
  EXPECT_EQ(tryOpen(u"C:\\no\\x.txt", GENERIC_WRITE, CREATE_ALWAYS), error(ERROR_PATH_NOT_FOUND));
  EXPECT_EQ(tryOpen(u"C:\\no.txt", GENERIC_WRITE, OPEN_ALWAYS), error(ERROR_SUCCESS));
  EXPECT_TRUE(has(R"(C:\no.txt)"));
  EXPECT_EQ(tryOpen(u"C:\\old.txt", GENERIC_WRITE, OPEN_ALWAYS), error(ERROR_SUCCESS));
  EXPECT_EQ(content(R"(C:\old.txt)"), "old");
  EXPECT_EQ(tryOpen(u"C:\\old.txt", GENERIC_WRITE, CREATE_ALWAYS), error(ERROR_SUCCESS));
  EXPECT_EQ(content(R"(C:\old.txt)"), "");
  EXPECT_EQ(tryOpen(u"C:\\old.txt", GENERIC_READ, 9), error(ERROR_INVALID_PARAMETER));
}

TEST_F(ApiFilesTest, SaysThatItFoundTheFileThere) {
  file(R"(C:\old.txt)");
  start();
  CloseHandle(open(u"C:\\old.txt", GENERIC_WRITE, CREATE_ALWAYS));
  EXPECT_EQ(GetLastError(), error(ERROR_ALREADY_EXISTS));
  CloseHandle(open(u"C:\\new.txt", GENERIC_WRITE, CREATE_ALWAYS));
  EXPECT_EQ(GetLastError(), error(ERROR_SUCCESS));
}

TEST_F(ApiFilesTest, AFolderIsNotOpened) {
  start();
  EXPECT_EQ(tryOpen(u"C:\\", GENERIC_READ, OPEN_EXISTING), error(ERROR_ACCESS_DENIED));
}

TEST_F(ApiFilesTest, AHandleDoesOnlyWhatItWasOpenedFor) {
  file(R"(C:\a.txt)", "abc");
  start();
  std::array<char, 4> buffer{};
  DWORD size = 9;
  const HANDLE reader = open(u"C:\\a.txt", GENERIC_READ, OPEN_EXISTING);
  EXPECT_EQ(WriteFile(reader, "x", 1, &size, nullptr), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_ACCESS_DENIED));
  EXPECT_EQ(FlushFileBuffers(reader), FALSE);
  EXPECT_NE(ReadFile(reader, buffer.data(), 2, &size, nullptr), FALSE);
  EXPECT_EQ(size, 2U);
  EXPECT_NE(ReadFile(reader, buffer.data(), 4, &size, nullptr), FALSE);
  EXPECT_EQ(size, 1U);
  EXPECT_NE(ReadFile(reader, buffer.data(), 4, &size, nullptr), FALSE);
  EXPECT_EQ(size, 0U);
  CloseHandle(reader);
  const HANDLE writer = open(u"C:\\a.txt", GENERIC_WRITE, OPEN_EXISTING);
  EXPECT_EQ(ReadFile(writer, buffer.data(), 2, &size, nullptr), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_ACCESS_DENIED));
  CloseHandle(writer);
}

TEST_F(ApiFilesTest, AClosedHandleIsNoHandle) {
  file(R"(C:\a.txt)");
  start();
  const HANDLE handle = open(u"C:\\a.txt", GENERIC_READ, OPEN_EXISTING);
  EXPECT_NE(CloseHandle(handle), FALSE);
  EXPECT_EQ(CloseHandle(handle), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_HANDLE));
  DWORD size = 0;
  EXPECT_EQ(ReadFile(handle, &size, 1, &size, nullptr), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_HANDLE));
  EXPECT_EQ(CloseHandle(nullptr), FALSE);
  EXPECT_NE(CloseHandle(GetCurrentProcess()), FALSE);
}

TEST_F(ApiFilesTest, AReadOnlyFileIsNotWritten) {
  file(R"(C:\a.txt)", "old");
  attributes(R"(C:\a.txt)", FILE_ATTRIBUTE_READONLY);
  start();
  EXPECT_EQ(tryOpen(u"C:\\a.txt", GENERIC_WRITE, OPEN_EXISTING), error(ERROR_ACCESS_DENIED));
  EXPECT_EQ(tryOpen(u"C:\\a.txt", GENERIC_WRITE, CREATE_ALWAYS), error(ERROR_ACCESS_DENIED));
  EXPECT_EQ(tryOpen(u"C:\\a.txt", GENERIC_READ, OPEN_EXISTING), error(ERROR_SUCCESS));
  EXPECT_EQ(content(R"(C:\a.txt)"), "old");
}

TEST_F(ApiFilesTest, AHiddenFileIsReplacedOnlyByAHiddenOne) {
  file(R"(C:\a.txt)", "old");
  attributes(R"(C:\a.txt)", FILE_ATTRIBUTE_HIDDEN);
  start();
  EXPECT_EQ(tryOpen(u"C:\\a.txt", GENERIC_WRITE, CREATE_ALWAYS), error(ERROR_ACCESS_DENIED));
  EXPECT_EQ(tryOpen(u"C:\\a.txt", GENERIC_WRITE, CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN),
            error(ERROR_SUCCESS));
  EXPECT_EQ(GetFileAttributesW(u"C:\\a.txt"), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(ApiFilesTest, TheAccessListDecidesWhatMayBeOpened) {
  file(R"(C:\a.txt)");
  security(R"(C:\a.txt)", "D:(A;;FR;;;BU)");
  start();
  EXPECT_EQ(tryOpen(u"C:\\a.txt", GENERIC_READ, OPEN_EXISTING), error(ERROR_SUCCESS));
  EXPECT_EQ(tryOpen(u"C:\\a.txt", GENERIC_WRITE, OPEN_EXISTING), error(ERROR_ACCESS_DENIED));
  EXPECT_EQ(tryOpen(u"C:\\a.txt", GENERIC_READ, CREATE_ALWAYS), error(ERROR_ACCESS_DENIED));
  EXPECT_EQ(tryOpen(u"C:\\a.txt", 0, OPEN_EXISTING), error(ERROR_SUCCESS));
}

TEST_F(ApiFilesTest, AFolderThatTakesNoFilesRefusesANewOne) {
  folder(R"(C:\f)");
  security(R"(C:\f)", "D:(A;OICI;FR;;;BU)");
  start();
  EXPECT_EQ(tryOpen(u"C:\\f\\a.txt", GENERIC_WRITE, CREATE_NEW), error(ERROR_ACCESS_DENIED));
  EXPECT_FALSE(has(R"(C:\f\a.txt)"));
}

TEST_F(ApiFilesTest, ANewFileTakesOverItsFoldersList) {
  folder(R"(C:\f)");
  security(R"(C:\f)", "D:(A;OI;FR;;;BU)(A;;FA;;;BA)");
  start();
  EXPECT_EQ(tryOpen(u"C:\\f\\a.txt", GENERIC_WRITE, CREATE_NEW), error(ERROR_SUCCESS));
  EXPECT_EQ(tryOpen(u"C:\\f\\a.txt", GENERIC_WRITE, OPEN_EXISTING), error(ERROR_ACCESS_DENIED));
  restart();
  EXPECT_EQ(machineFolder().read("security.txt"),
            "C:\\f\tD:(A;OI;FR;;;BU)(A;;FA;;;BA)\nC:\\f\\a.txt\tD:AI(A;ID;FR;;;BU)\n");
}

TEST_F(ApiFilesTest, NeverWritesThroughALinkThatLeavesTheDrive) {
  start();
  machineFolder().write("outside.txt", "safe");
  std::filesystem::create_symlink("../outside.txt", machineFolder().path() / "C/link.txt");
  std::filesystem::create_symlink("..", machineFolder().path() / "C/up");
  EXPECT_NE(tryOpen(u"C:\\link.txt", GENERIC_WRITE, CREATE_ALWAYS), error(ERROR_SUCCESS));
  EXPECT_NE(tryOpen(u"C:\\up\\new.txt", GENERIC_WRITE, CREATE_ALWAYS), error(ERROR_SUCCESS));
  EXPECT_EQ(DeleteFileW(u"C:\\up\\outside.txt"), FALSE);
  EXPECT_EQ(machineFolder().read("outside.txt"), "safe");
  EXPECT_FALSE(machineFolder().has("new.txt"));
}

TEST_F(ApiFilesTest, EachCallCanBeMadeToFail) {
  file(R"(C:\a.txt)");
  FaultPlan& faults = start().faults();
  faults.fail(ApiCall::CreateFile, 1, ERROR_SHARING_VIOLATION);
  EXPECT_EQ(tryOpen(u"C:\\a.txt", GENERIC_READ, OPEN_EXISTING), error(ERROR_SHARING_VIOLATION));
  const HANDLE handle = open(u"C:\\a.txt", GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
  faults.fail(ApiCall::ReadFile, 1, ERROR_GEN_FAILURE);
  faults.fail(ApiCall::WriteFile, 1, ERROR_DISK_FULL);
  DWORD size = 0;
  EXPECT_EQ(ReadFile(handle, &size, 1, &size, nullptr), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_GEN_FAILURE));
  EXPECT_EQ(WriteFile(handle, "x", 1, &size, nullptr), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_DISK_FULL));
  CloseHandle(handle);
}

}  // namespace
}  // namespace zelvreg::machine
