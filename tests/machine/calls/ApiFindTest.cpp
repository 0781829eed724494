#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <string>
#include <vector>

#include "machine/files/OpenFiles.h"
#include "support/MachineFixture.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

using Names = std::vector<std::string>;

DWORD error(LONG code) { return static_cast<DWORD>(code); }

class ApiFindTest : public zelvreg::fixture::MachineFixture {
 protected:
  static Names search(const char16_t* pattern) {
    Names names;
    WIN32_FIND_DATAW data{};
    const HANDLE find = FindFirstFileW(pattern, &data);
    if (find == INVALID_HANDLE_VALUE) return {"error " + std::to_string(GetLastError())};
    do {
      names.push_back(utf8(data.cFileName));
    } while (FindNextFileW(find, &data) != FALSE);
    EXPECT_EQ(GetLastError(), error(ERROR_NO_MORE_FILES));
    EXPECT_NE(FindClose(find), FALSE);
    return names;
  }
};

TEST_F(ApiFindTest, GivesNamesInOrderHiddenOnesToo) {
  for (const char* name : {R"(C:\f\b.txt)", R"(C:\f\A.txt)", R"(C:\f\c.dat)", R"(C:\f\_.txt)"}) {
    file(name);
  }
  folder(R"(C:\f\sub)");
  attributes(R"(C:\f\b.txt)", FILE_ATTRIBUTE_HIDDEN);
  start();
  EXPECT_EQ(search(u"C:\\F\\*"), (Names{".", "..", "A.txt", "b.txt", "c.dat", "sub", "_.txt"}));
  EXPECT_EQ(search(u"C:\\f\\*.*"), search(u"C:\\f\\*"));
  EXPECT_EQ(search(u"c:/f/*.TXT"), (Names{"A.txt", "b.txt", "_.txt"}));
  EXPECT_EQ(search(u"C:\\f\\?.txt"), (Names{"A.txt", "b.txt", "_.txt"}));
  EXPECT_EQ(search(u"C:\\f\\B.TXT"), Names{"b.txt"});
  EXPECT_EQ(computer().openFiles().count(), 0U);
}

TEST_F(ApiFindTest, ARootHasNoFolderAbove) {
  file(R"(C:\a.txt)");
  start();
  EXPECT_EQ(search(u"C:\\*"), Names{"a.txt"});
}

TEST_F(ApiFindTest, SaysWhyNothingWasFound) {
  folder(R"(C:\f)");
  file(R"(C:\a.txt)");
  start();
  EXPECT_EQ(search(u"C:\\f\\*.txt"), Names{"error 2"});
  EXPECT_EQ(search(u"C:\\no\\*"), Names{"error 3"});
  EXPECT_EQ(search(u"C:\\a.txt\\*"), Names{"error 123"});
  EXPECT_EQ(search(u"C:\\f\\"), Names{"error 2"});
  EXPECT_EQ(search(u"C:\\*\\a.txt"), Names{"error 123"});
  EXPECT_EQ(search(u""), Names{"error 2"});
}

TEST_F(ApiFindTest, LooksInTheProgramsFolderWithoutAFolder) {
  file(R"(C:\Program Files (x86)\zelvreg\a.lng)");
  start();
  EXPECT_EQ(search(u"*.lng"), Names{"a.lng"});
}

TEST_F(ApiFindTest, TellsSizeTimeAndAttributes) {
  file(R"(C:\a.txt)", "12345");
  start();
  WIN32_FIND_DATAW data{};
  FindClose(FindFirstFileW(u"C:\\a.txt", &data));
  EXPECT_EQ(data.nFileSizeLow, 5U);
  EXPECT_EQ(data.dwFileAttributes, FILE_ATTRIBUTE_ARCHIVE);
  // After the year 2020.
  EXPECT_GT(data.ftLastWriteTime.dwHighDateTime, 30785000U);
  FindClose(FindFirstFileW(u"C:\\Program*", &data));
}

TEST_F(ApiFindTest, PassesOverALinkThatLeavesTheDrive) {
  file(R"(C:\f\a.txt)");
  start();
  std::filesystem::create_symlink("/etc", machineFolder().path() / "C/f/out");
  std::filesystem::create_symlink("a.txt", machineFolder().path() / "C/f/in");
  EXPECT_EQ(search(u"C:\\f\\*"), (Names{".", "..", "a.txt", "in"}));
}

TEST_F(ApiFindTest, ASearchIsClosedOnceAndOnlyAsASearch) {
  start();
  file(R"(C:\a.txt)");
  WIN32_FIND_DATAW data{};
  const HANDLE find = FindFirstFileW(u"C:\\*", &data);
  EXPECT_EQ(CloseHandle(find), FALSE);
  EXPECT_NE(FindClose(find), FALSE);
  EXPECT_EQ(FindClose(find), FALSE);
  EXPECT_EQ(FindNextFileW(find, &data), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_INVALID_HANDLE));
}

TEST_F(ApiFindTest, CanBeMadeToFail) {
  start().faults().fail(ApiCall::FindFirstFile, 1, ERROR_ACCESS_DENIED);
  EXPECT_EQ(search(u"C:\\*"), Names{"error 5"});
}

TEST_F(ApiFindTest, NamesTheProgramsOwnFile) {
  start();
  std::array<char16_t, 64> path{};
  EXPECT_EQ(GetModuleFileNameW(nullptr, path.data(), 64), 42U);
  EXPECT_EQ(std::u16string(path.data()), u"C:\\Program Files (x86)\\zelvreg\\zelvreg.exe");
  EXPECT_EQ(GetModuleFileNameW(nullptr, path.data(), 5), 5U);
  EXPECT_EQ(std::u16string(path.data()), u"C:\\P");
  EXPECT_EQ(GetLastError(), error(ERROR_INSUFFICIENT_BUFFER));
}

TEST_F(ApiFindTest, On32BitsTheProgramLiesInProgramFiles) {
  setting("bits", "32");
  start();
  std::array<char16_t, 64> path{};
  GetModuleFileNameW(nullptr, path.data(), 64);
  EXPECT_EQ(std::u16string(path.data()), u"C:\\Program Files\\zelvreg\\zelvreg.exe");
}

}  // namespace
}  // namespace zelvreg::machine
