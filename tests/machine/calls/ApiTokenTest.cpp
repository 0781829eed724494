#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "machine/RegistryCalls.h"
#include "machine/registry/Registry.h"
#include "machine/security/Accounts.h"
#include "support/MachineFixture.h"

namespace zelvreg::machine {
namespace {

using fixture::OpenedKey;

constexpr const char* closedPath = R"(HKEY_CURRENT_USER\Software\Closed)";
constexpr const char16_t* closed = u"Software\\Closed";

class ApiTokenTest : public fixture::MachineFixture {
 protected:
  ApiTokenTest() {
    key(closedPath, R"("a"="x")");
    security(closedPath, "O:SYD:(A;;KA;;;SY)");
    start();
    EXPECT_NE(OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES, &token), FALSE);
  }
  ~ApiTokenTest() override { EXPECT_NE(CloseHandle(token), FALSE); }

  void set(LPCWSTR name, DWORD attributes) {
    TOKEN_PRIVILEGES change{1, {{{0, 0}, attributes}}};
    EXPECT_NE(LookupPrivilegeValueW(nullptr, name, &change.Privileges[0].Luid), FALSE);
    EXPECT_NE(AdjustTokenPrivileges(token, FALSE, &change, sizeof change, nullptr, nullptr), FALSE);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS));
  }

  // The answer of an open, whose handle is closed.
  static LONG openStatus(DWORD options, REGSAM access) {
    HKEY opened = nullptr;
    const LONG status = RegOpenKeyExW(HKEY_CURRENT_USER, closed, options, access, &opened);
    if (status == ERROR_SUCCESS) RegCloseKey(opened);
    return status;
  }

  HANDLE token = nullptr;
};

TEST_F(ApiTokenTest, WithoutAPrivilegeAnOpenForBackupIsDenied) {
  EXPECT_EQ(openStatus(REG_OPTION_BACKUP_RESTORE, KEY_QUERY_VALUE), ERROR_ACCESS_DENIED);
  HKEY made = nullptr;
  EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, u"Software\\Closed\\New", 0, nullptr,
                            REG_OPTION_BACKUP_RESTORE, KEY_READ, nullptr, &made, nullptr),
            ERROR_ACCESS_DENIED);
}

TEST_F(ApiTokenTest, ToReadForABackupIsNotToWrite) {
  set(u"SeBackupPrivilege", SE_PRIVILEGE_ENABLED);
  EXPECT_EQ(openStatus(0, KEY_QUERY_VALUE), ERROR_ACCESS_DENIED);
  HKEY opened = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, closed, REG_OPTION_BACKUP_RESTORE, 0, &opened),
            ERROR_SUCCESS);
  DWORD size = 0;
  EXPECT_EQ(RegGetKeySecurity(opened, DACL_SECURITY_INFORMATION, nullptr, &size),
            ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(RegDeleteValueW(opened, u"a"), ERROR_ACCESS_DENIED);
  RegCloseKey(opened);
}

TEST_F(ApiTokenTest, ToRestoreIsToWriteAndToMakeAnywhere) {
  set(u"SeRestorePrivilege", SE_PRIVILEGE_ENABLED);
  HKEY opened = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, closed, REG_OPTION_BACKUP_RESTORE, 0, &opened),
            ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteValueW(opened, u"a"), ERROR_SUCCESS);
  HKEY made = nullptr;
  EXPECT_EQ(RegCreateKeyExW(opened, u"New", 0, nullptr, 0, KEY_READ, nullptr, &made, nullptr),
            ERROR_ACCESS_DENIED);
  ASSERT_EQ(RegCreateKeyExW(opened, u"New", 0, nullptr, REG_OPTION_BACKUP_RESTORE, KEY_READ,
                            nullptr, &made, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(fixture::setText(made, "b", "y"), ERROR_SUCCESS);
  RegCloseKey(made);
  RegCloseKey(opened);
  set(u"SeRestorePrivilege", 0);
  EXPECT_EQ(openStatus(REG_OPTION_BACKUP_RESTORE, 0), ERROR_ACCESS_DENIED);
}

TEST_F(ApiTokenTest, WhoTakesOwnershipMayChangeTheList) {
  EXPECT_EQ(openStatus(0, WRITE_OWNER), ERROR_ACCESS_DENIED);
  set(u"SeTakeOwnershipPrivilege", SE_PRIVILEGE_ENABLED);
  EXPECT_EQ(openStatus(0, WRITE_OWNER | KEY_QUERY_VALUE), ERROR_ACCESS_DENIED);
  {
    const OpenedKey opened(HKEY_CURRENT_USER, R"(Software\Closed)", WRITE_OWNER);
    Bytes owner = selfRelative(parseSddl("O:BA"), OWNER_SECURITY_INFORMATION);
    EXPECT_EQ(RegSetKeySecurity(opened, OWNER_SECURITY_INFORMATION, owner.data()), ERROR_SUCCESS);
  }
  EXPECT_EQ(openStatus(0, WRITE_DAC), ERROR_SUCCESS);
  EXPECT_EQ(openStatus(0, KEY_QUERY_VALUE), ERROR_ACCESS_DENIED);
}

TEST_F(ApiTokenTest, APrivilegeThatIsNotHeldIsNotAssigned) {
  LUID value{};
  EXPECT_EQ(LookupPrivilegeValueW(nullptr, u"SeTcbPrivilege", &value), FALSE);
  TOKEN_PRIVILEGES change{1, {{{7, 0}, SE_PRIVILEGE_ENABLED}}};
  EXPECT_NE(AdjustTokenPrivileges(token, FALSE, &change, sizeof change, nullptr, nullptr), FALSE);
  EXPECT_EQ(GetLastError(), 1300U);
  set(u"SeBackupPrivilege", SE_PRIVILEGE_ENABLED);
  EXPECT_NE(AdjustTokenPrivileges(token, TRUE, nullptr, 0, nullptr, nullptr), FALSE);
  EXPECT_EQ(openStatus(REG_OPTION_BACKUP_RESTORE, 0), ERROR_ACCESS_DENIED);
}

TEST_F(ApiTokenTest, TheTokenNamesItsUser) {
  DWORD size = 0;
  EXPECT_EQ(GetTokenInformation(token, TokenUser, nullptr, 0, &size), FALSE);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
  std::vector<BYTE> bytes(size);
  ASSERT_NE(GetTokenInformation(token, TokenUser, bytes.data(), size, &size), FALSE);
  const auto* user = reinterpret_cast<const TOKEN_USER*>(bytes.data());
  EXPECT_EQ(sidBytes(user->User.Sid), folderUserSid());
  EXPECT_EQ(GetTokenInformation(GetCurrentProcess(), TokenUser, bytes.data(), size, &size), FALSE);
}

}  // namespace
}  // namespace zelvreg::machine
