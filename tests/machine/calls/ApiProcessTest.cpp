#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <cstring>
#include <string>

#include "machine/computer/Clock.h"
#include "support/MachineFixture.h"

namespace zelvreg::machine {
namespace {

class ApiProcessTest : public zelvreg::fixture::MachineFixture {};

TEST_F(ApiProcessTest, A32BitProcessRunsOn64Bits) {
  start();
  BOOL wow64 = FALSE;
  EXPECT_NE(IsWow64Process(GetCurrentProcess(), &wow64), FALSE);
  EXPECT_NE(wow64, FALSE);
  EXPECT_EQ(IsWow64Process(nullptr, &wow64), FALSE);
}

TEST_F(ApiProcessTest, On32BitsItIsAtHome) {
  setting("bits", "32");
  start();
  BOOL wow64 = TRUE;
  EXPECT_NE(IsWow64Process(GetCurrentProcess(), &wow64), FALSE);
  EXPECT_EQ(wow64, FALSE);
}

TEST_F(ApiProcessTest, TellsTheCodePageAndTheTime) {
  setting("codepage", "1250");
  start();
  EXPECT_EQ(GetACP(), 1250U);
  SYSTEMTIME time{};
  GetLocalTime(&time);
  EXPECT_EQ(time.wYear, 2026);
  EXPECT_EQ(time.wSecond, 6);
  const ULONGLONG before = GetTickCount64();
  computer().clock().advance(2000);
  GetLocalTime(&time);
  EXPECT_EQ(time.wSecond, 8);
  EXPECT_EQ(GetTickCount64() - before, 2000U);
}

TEST_F(ApiProcessTest, GivesAVariableIfThereIsRoom) {
  start();
  std::array<char16_t, 16> buffer{};
  EXPECT_EQ(GetEnvironmentVariableW(u"systemroot", buffer.data(), 11), 10U);
  EXPECT_EQ(std::u16string(buffer.data()), u"C:\\Windows");
  EXPECT_EQ(GetEnvironmentVariableW(u"SystemRoot", buffer.data(), 10), 11U);
  EXPECT_EQ(GetEnvironmentVariableW(u"SystemRoot", nullptr, 0), 11U);
  EXPECT_EQ(GetEnvironmentVariableW(u"nothing", buffer.data(), 16), 0U);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ENVVAR_NOT_FOUND));
}

TEST_F(ApiProcessTest, ExpandsVariablesAndTellsTheSizeWithTheNul) {
  variable("V", "\u0416");
  start();
  std::array<char16_t, 32> buffer{};
  EXPECT_EQ(ExpandEnvironmentStringsW(u"%SYSTEMROOT%\\%x%", nullptr, 0), 15U);
  EXPECT_EQ(ExpandEnvironmentStringsW(u"%SYSTEMROOT%\\%x%", buffer.data(), 15), 15U);
  EXPECT_EQ(std::u16string(buffer.data()), u"C:\\Windows\\%x%");
  EXPECT_EQ(ExpandEnvironmentStringsW(u"%v%", buffer.data(), 32), 2U);
  EXPECT_EQ(std::u16string(buffer.data()), u"\u0416");
}

TEST_F(ApiProcessTest, TheLastErrorIsAskedAndSetWithoutAMachine) {
  SetLastError(7);
  EXPECT_EQ(GetLastError(), 7U);
}

TEST_F(ApiProcessTest, GivesZeroFilledMemory) {
  auto* bytes = static_cast<char*>(LocalAlloc(LPTR, 100));
  EXPECT_EQ(std::string(bytes, 100), std::string(100, '\0'));
  EXPECT_EQ(LocalFree(bytes), nullptr);
  EXPECT_EQ(LocalFree(nullptr), nullptr);
}

class ApiTextTest : public zelvreg::fixture::MachineFixture {};

TEST_F(ApiTextTest, ConvertsWithoutAMachineInTheWesternPage) {
  std::array<char16_t, 8> wide{};
  EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "\x80", -1, wide.data(), 8), 2);
  EXPECT_EQ(std::u16string(wide.data()), u"€");
  std::array<char, 8> narrow{};
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"€", -1, narrow.data(), 8, nullptr, nullptr), 2);
  EXPECT_STREQ(narrow.data(), "\x80");
}

TEST_F(ApiTextTest, UsesTheMachinesPageAndThoseAskedForByNumber) {
  setting("codepage", "1251");
  start();
  std::array<char16_t, 8> wide{};
  EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "\xE6", 1, wide.data(), 8), 1);
  EXPECT_EQ(wide[0], u'ж');
  EXPECT_EQ(MultiByteToWideChar(1252, 0, "\xE6", 1, wide.data(), 8), 1);
  EXPECT_EQ(wide[0], u'æ');
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xC3\xA6", 2, wide.data(), 8), 1);
  EXPECT_EQ(wide[0], u'æ');
  EXPECT_EQ(MultiByteToWideChar(12345, 0, "x", 1, wide.data(), 8), 0);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST_F(ApiTextTest, TellsTheSizeAndRefusesABufferThatIsTooSmall) {
  std::array<char16_t, 2> wide{};
  EXPECT_EQ(MultiByteToWideChar(1252, 0, "abc", -1, nullptr, 0), 4);
  EXPECT_EQ(MultiByteToWideChar(1252, 0, "abc", 3, nullptr, 0), 3);
  EXPECT_EQ(MultiByteToWideChar(1252, 0, "abc", -1, wide.data(), 2), 0);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
  EXPECT_EQ(WideCharToMultiByte(932, 0, u"テ", 1, nullptr, 0, nullptr, nullptr), 2);
  EXPECT_EQ(MultiByteToWideChar(1252, 0, "", 0, wide.data(), 2), 0);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST_F(ApiTextTest, TellsWhetherACharacterWasReplaced) {
  std::array<char, 8> narrow{};
  BOOL replaced = FALSE;
  EXPECT_EQ(WideCharToMultiByte(1252, 0, u"aж", 2, narrow.data(), 8, "_", &replaced), 2);
  EXPECT_STREQ(narrow.data(), "a_");
  EXPECT_NE(replaced, FALSE);
  EXPECT_EQ(WideCharToMultiByte(1252, 0, u"a?", 2, narrow.data(), 8, nullptr, &replaced), 2);
  EXPECT_EQ(replaced, FALSE);
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, u"a", 1, narrow.data(), 8, "_", nullptr), 0);
}

TEST_F(ApiTextTest, RefusesInvalidTextWhereItIsAskedTo) {
  std::array<char16_t, 8> wide{};
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 8, "\xFF", 1, wide.data(), 8), 0);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_UNICODE_TRANSLATION));
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xFF", 1, wide.data(), 8), 1);
}

}  // namespace
}  // namespace zelvreg::machine
