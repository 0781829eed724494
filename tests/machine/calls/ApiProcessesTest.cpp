#include <gtest/gtest.h>
#include <windows.h>
// Both need <windows.h> before them.
#include <shellapi.h>
#include <tlhelp32.h>

#include <string>
#include <vector>

#include "machine/computer/Processes.h"
#include "machine/computer/Requests.h"
#include "machine/files/OpenFiles.h"
#include "support/MachineFixture.h"

namespace zelvreg::machine {
namespace {

using Texts = std::vector<std::string>;

class ApiProcessesTest : public fixture::MachineFixture {
 protected:
  ApiProcessesTest() { start(); }
  const Texts& started() { return computer().processes().started; }
};

TEST_F(ApiProcessesTest, AProgramIsStartedByItsCommandLine) {
  std::u16string commandLine = u"\"C:\\\u30BD\\x.exe\" -a";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION program{};
  EXPECT_NE(CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                           nullptr, &startup, &program),
            FALSE);
  EXPECT_EQ(started(), Texts{"\"C:\\\u30BD\\x.exe\" -a"});
  EXPECT_EQ(computer().openFiles().count(), 2U);
  EXPECT_NE(CloseHandle(program.hThread), FALSE);
  EXPECT_NE(CloseHandle(program.hProcess), FALSE);
  EXPECT_EQ(computer().openFiles().count(), 0U);
}

TEST_F(ApiProcessesTest, WithoutRoomForItsHandlesNoProgramIsStarted) {
  STARTUPINFOW startup{};
  EXPECT_EQ(CreateProcessW(u"C:\\x.exe", nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                           &startup, nullptr),
            FALSE);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
  EXPECT_TRUE(started().empty());
}

TEST_F(ApiProcessesTest, ADocumentIsOpenedWithWhatGoesAlong) {
  const auto open = [](LPCWSTR file, LPCWSTR parameters) {
    return reinterpret_cast<std::uintptr_t>(
        ShellExecuteW(nullptr, u"open", file, parameters, nullptr, SW_SHOWNORMAL));
  };
  EXPECT_GT(open(u"C:\\\u0416.txt", nullptr), 32U);
  EXPECT_GT(open(u"a.exe", u""), 32U);
  EXPECT_GT(open(u"a.exe", u"-b"), 32U);
  EXPECT_EQ(started(), (Texts{"C:\\\u0416.txt", "a.exe", "a.exe -b"}));
}

TEST_F(ApiProcessesTest, HowADocumentIsToBeOpenedIsKept) {
  constexpr INT maximized = 3;
  const HWND desktop = GetDesktopWindow();
  ShellExecuteW(desktop, u"print", u"C:\\\u0416.txt", u"-b", u"C:\\\u0416", maximized);
  ShellExecuteW(nullptr, nullptr, u"a.exe", nullptr, nullptr, SW_SHOWNORMAL);
  const auto& opened = computer().requests().opened;
  ASSERT_EQ(opened.size(), 2U);
  EXPECT_EQ(opened[0].owner, desktop);
  EXPECT_EQ(opened[0].verb, "print");
  EXPECT_EQ(opened[0].file, "C:\\\u0416.txt");
  EXPECT_EQ(opened[0].parameters, "-b");
  EXPECT_EQ(opened[0].folder, "C:\\\u0416");
  EXPECT_EQ(opened[0].showStyle, maximized);
  EXPECT_EQ(opened[1].owner, nullptr);
  EXPECT_EQ(opened[1].verb, std::nullopt);
  EXPECT_EQ(opened[1].parameters, std::nullopt);
  EXPECT_EQ(opened[1].folder, std::nullopt);
}

TEST_F(ApiProcessesTest, ListsWhatRuns) {
  computer().processes().running = {"a.exe", "\u0416.exe"};
  const HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  ASSERT_NE(Process32FirstW(list, &entry), FALSE);
  EXPECT_EQ(std::u16string(entry.szExeFile), u"a.exe");
  ASSERT_NE(Process32NextW(list, &entry), FALSE);
  EXPECT_EQ(std::u16string(entry.szExeFile), u"\u0416.exe");
  EXPECT_EQ(entry.th32ProcessID, 2U);
  EXPECT_EQ(Process32NextW(list, &entry), FALSE);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_MORE_FILES));
  CloseHandle(list);
}

}  // namespace
}  // namespace zelvreg::machine
