#include <gtest/gtest.h>
#include <shlwapi.h>
#include <windows.h>

#include "machine/RegistryCalls.h"
#include "machine/registry/Registry.h"
#include "machine/security/Security.h"
#include "support/MachineFixture.h"

namespace zelvreg::fixture {
namespace {

constexpr const char* vendorPath = R"(HKEY_CURRENT_USER\Software\Vendor)";
constexpr const char* vendor = R"(Software\Vendor)";
constexpr SECURITY_INFORMATION dacl = DACL_SECURITY_INFORMATION;

class RegistrySecurityTest : public MachineFixture {
 protected:
  static std::string listOf(HKEY key) {
    DWORD size = 0;
    if (RegGetKeySecurity(key, dacl, nullptr, &size) != ERROR_INSUFFICIENT_BUFFER) {
      return "(no size)";
    }
    machine::Bytes bytes(size);
    const LONG status = RegGetKeySecurity(key, dacl, bytes.data(), &size);
    return status == ERROR_SUCCESS ? machine::formatSddl(machine::readDescriptor(bytes.data()))
                                   : "(error " + std::to_string(status) + ")";
  }

  static LONG setList(HKEY key, std::string_view sddl) {
    machine::Bytes bytes = machine::selfRelative(machine::parseSddl(sddl), dacl);
    return RegSetKeySecurity(key, dacl, bytes.data());
  }
};

TEST_F(RegistrySecurityTest, AKeyOfWhichNothingIsSaidIsReadAndWrittenByAdministrators) {
  key(vendorPath);
  start();
  const OpenedKey opened(HKEY_CURRENT_USER, vendor, all32);
  EXPECT_EQ(opened.status, ERROR_SUCCESS);
  EXPECT_EQ(listOf(opened), machine::formatSddl(machine::defaultKeySecurity()));
}

TEST_F(RegistrySecurityTest, ADeniedRightFailsTheOpenAndOthersStay) {
  key(vendorPath, R"(@="x")");
  security(vendorPath, "D:(D;;KW;;;BA)(A;;KA;;;BA)");
  start();
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, vendor, KEY_WRITE), ERROR_ACCESS_DENIED);
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, vendor, KEY_QUERY_VALUE), "x");
  HKEY key = nullptr;
  EXPECT_EQ(RegOpenKeyW(HKEY_CURRENT_USER, uR"(Software\Vendor)", &key), ERROR_SUCCESS);
  EXPECT_EQ(setText(key, "", "y"), ERROR_ACCESS_DENIED);
  RegCloseKey(key);
}

TEST_F(RegistrySecurityTest, WithoutAnAccessListEverybodyMayDoEverything) {
  key(vendorPath);
  security(vendorPath, "D:NO_ACCESS_CONTROL");
  start();
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, vendor, KEY_ALL_ACCESS), ERROR_SUCCESS);
}

TEST_F(RegistrySecurityTest, DeletingNeedsTheRightOnTheKeyItself) {
  key(std::string(vendorPath) + R"(\a)");
  key(std::string(vendorPath) + R"(\tree\inner)");
  security(std::string(vendorPath) + R"(\a)", "D:(A;;KR;;;BA)");
  security(std::string(vendorPath) + R"(\tree\inner)", "D:(A;;KR;;;BA)");
  start();
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, uR"(Software\Vendor\a)"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(SHDeleteKeyW(HKEY_CURRENT_USER, uR"(Software\Vendor\tree)"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, R"(Software\Vendor\tree\inner)", KEY_READ),
            ERROR_SUCCESS);
}

TEST_F(RegistrySecurityTest, MakingASubkeyNeedsTheRightOnItsParent) {
  key(vendorPath);
  security(vendorPath, "D:(A;;KR;;;BA)");
  start();
  EXPECT_EQ(OpenedKey::create(HKEY_CURRENT_USER, R"(Software\Vendor\new)", all32).status,
            ERROR_ACCESS_DENIED);
}

TEST_F(RegistrySecurityTest, ANewKeyTakesOverTheInheritableEntries) {
  key(vendorPath);
  security(vendorPath, "D:(A;;KA;;;BA)(A;CI;KR;;;WD)(A;CI;KA;;;BA)");
  machine::Registry& registry = start().registry();
  const OpenedKey made = OpenedKey::create(HKEY_CURRENT_USER, R"(Software\Vendor\new)", all32);
  const std::string list = listOf(made);
  EXPECT_NE(list.find(";KR;;;WD)"), std::string::npos) << list;
  EXPECT_TRUE(registry.securityChanged());
  EXPECT_EQ(registry.securities().size(), 2U);
}

TEST_F(RegistrySecurityTest, SettingAListTouchesThatKeyAlone) {
  key(std::string(vendorPath) + R"(\below)");
  machine::Registry& registry = start().registry();
  const OpenedKey opened(HKEY_CURRENT_USER, vendor, all32);
  EXPECT_EQ(setList(opened, "D:(A;;GA;;;BA)"), ERROR_SUCCESS);
  EXPECT_EQ(listOf(opened), "D:(A;;KA;;;BA)");
  EXPECT_EQ(listOf(OpenedKey(opened, "below", all32)),
            machine::formatSddl(machine::defaultKeySecurity()));
  ASSERT_EQ(registry.securities().size(), 1U);
  EXPECT_EQ(registry.securities().front().first,
            R"(HKEY_USERS\S-1-5-21-1-1-1-1001\Software\Vendor)");
}

TEST_F(RegistrySecurityTest, AnOpenHandleKeepsItsRightsWhenTheListChanges) {
  key(vendorPath);
  start();
  const OpenedKey opened(HKEY_CURRENT_USER, vendor, all32);
  EXPECT_EQ(setList(opened, "D:(D;;KA;;;WD)"), ERROR_SUCCESS);
  EXPECT_EQ(setText(opened, "", "x"), ERROR_SUCCESS);
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, vendor, KEY_READ), ERROR_ACCESS_DENIED);
}

TEST_F(RegistrySecurityTest, ReadingAndSettingTheListNeedTheirRightsOnTheHandle) {
  key(vendorPath);
  start();
  DWORD size = 0;
  EXPECT_EQ(RegGetKeySecurity(OpenedKey(HKEY_CURRENT_USER, vendor, KEY_QUERY_VALUE), dacl, nullptr,
                              &size),
            ERROR_ACCESS_DENIED);
  EXPECT_EQ(setList(OpenedKey(HKEY_CURRENT_USER, vendor, KEY_READ), "D:(A;;KA;;;BA)"),
            ERROR_ACCESS_DENIED);
  constexpr REGSAM listRights = READ_CONTROL | WRITE_DAC;
  EXPECT_EQ(setList(OpenedKey(HKEY_CURRENT_USER, vendor, listRights), "D:(A;;KA;;;BA)"),
            ERROR_SUCCESS);
}

TEST_F(RegistrySecurityTest, ADeletedKeysListGoesWithIt) {
  key(vendorPath);
  security(vendorPath, "D:(A;;KA;;;BA)");
  machine::Registry& registry = start().registry();
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, uR"(Software\Vendor)"), ERROR_SUCCESS);
  EXPECT_TRUE(registry.securities().empty());
  EXPECT_TRUE(registry.securityChanged());
}

TEST_F(RegistrySecurityTest, PlannedFaultsAreAnswered) {
  key(vendorPath);
  machine::Machine& machine = start();
  const OpenedKey opened(HKEY_CURRENT_USER, vendor, all32);
  machine.faults().fail(machine::ApiCall::RegGetKeySecurity, 1, ERROR_GEN_FAILURE);
  machine.faults().fail(machine::ApiCall::RegSetKeySecurity, 1, ERROR_GEN_FAILURE);
  DWORD size = 0;
  EXPECT_EQ(RegGetKeySecurity(opened, dacl, nullptr, &size), ERROR_GEN_FAILURE);
  EXPECT_EQ(setList(opened, "D:(A;;KA;;;BA)"), ERROR_GEN_FAILURE);
}

}  // namespace
}  // namespace zelvreg::fixture
