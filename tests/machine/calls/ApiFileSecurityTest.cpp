#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "machine/security/Security.h"
#include "support/MachineFixture.h"

namespace zelvreg::machine {
namespace {

DWORD error(LONG code) { return static_cast<DWORD>(code); }

class ApiFileSecurityTest : public zelvreg::fixture::MachineFixture {
 protected:
  static std::string listOf(const char16_t* path) {
    DWORD size = 0;
    EXPECT_EQ(GetFileSecurityW(path, DACL_SECURITY_INFORMATION, nullptr, 0, &size), FALSE);
    if (GetLastError() != error(ERROR_INSUFFICIENT_BUFFER)) return std::to_string(GetLastError());
    Bytes bytes(size);
    EXPECT_NE(GetFileSecurityW(path, DACL_SECURITY_INFORMATION, bytes.data(), size, &size), FALSE);
    return formatSddl(readDescriptor(bytes.data()));
  }
  static BOOL setList(const char16_t* path, std::string_view sddl) {
    Bytes bytes = selfRelative(parseSddl(sddl), DACL_SECURITY_INFORMATION);
    return SetFileSecurityW(path, DACL_SECURITY_INFORMATION, bytes.data());
  }
};

TEST_F(ApiFileSecurityTest, AFileHasTheUsualListUnlessOneIsSaid) {
  file(R"(C:\a.txt)");
  file(R"(C:\b.txt)");
  security(R"(C:\b.txt)", "D:NO_ACCESS_CONTROL");
  start();
  EXPECT_EQ(listOf(u"C:\\A.TXT"), "D:(A;OICI;FA;;;BA)(A;OICI;FA;;;SY)(A;OICI;0x1200a9;;;BU)");
  EXPECT_EQ(listOf(u"C:\\b.txt"), "D:NO_ACCESS_CONTROL");
  EXPECT_EQ(listOf(u"C:\\no.txt"), "2");
}

TEST_F(ApiFileSecurityTest, AListThatIsSetStaysWithTheMachine) {
  file(R"(C:\a.txt)");
  start();
  EXPECT_NE(setList(u"C:\\a.txt", "D:(A;;GA;;;S-1-5-21-1-1-1-1001)"), FALSE);
  EXPECT_EQ(listOf(u"C:\\a.txt"), "D:(A;;FA;;;S-1-5-21-1-1-1-1001)");
  restart();
  EXPECT_EQ(listOf(u"C:\\a.txt"), "D:(A;;FA;;;S-1-5-21-1-1-1-1001)");
}

TEST_F(ApiFileSecurityTest, SettingTakesTheRightToAndSoDoesReading) {
  file(R"(C:\a.txt)");
  security(R"(C:\a.txt)", "O:SYD:");
  start();
  EXPECT_EQ(setList(u"C:\\a.txt", "D:(A;;FA;;;WD)"), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_ACCESS_DENIED));
  EXPECT_EQ(listOf(u"C:\\a.txt"), "5");
}

TEST_F(ApiFileSecurityTest, BothCallsCanBeMadeToFail) {
  file(R"(C:\a.txt)");
  FaultPlan& faults = start().faults();
  faults.fail(ApiCall::GetFileSecurity, 1, ERROR_GEN_FAILURE);
  faults.fail(ApiCall::SetFileSecurity, 1, ERROR_GEN_FAILURE);
  EXPECT_EQ(listOf(u"C:\\a.txt"), "31");
  EXPECT_EQ(setList(u"C:\\a.txt", "D:"), FALSE);
  EXPECT_EQ(GetLastError(), error(ERROR_GEN_FAILURE));
}

}  // namespace
}  // namespace zelvreg::machine
