// Wine opens every key for an administrator and has none without a list, so only the emulated
// computer can show what a list decides.
#include "keys/AccountSids.h"
#include "keys/OpenKey.h"
#include "machine/Machine.h"
#include "machine/registry/Registry.h"
#include "registry/setpermission.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string place = "SOFTWARE\\PermissionsTest";
const std::string key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\PermissionsTest";

class KeyAccessTest : public fixture::ComputerFixture {
 protected:
  KeyAccessTest() { emptyKey(key); }
};

TEST_F(KeyAccessTest, AGrantedKeyCanBeWorkedOnAndItsNewSubkeysCannot) {
  setAccessOfKey(key, "D:(A;CI;KA;;;BA)");
  GrantKeyAccess(form, HiveHandle::LocalMachine, place, userName());
  const OpenKey open(HiveHandle::LocalMachine, place, workOn64BitView & ~KEY_CREATE_LINK);
  EXPECT_TRUE(open.isOpen());
  makeKey(key + "\\New");
  EXPECT_EQ(OpenKey(HiveHandle::LocalMachine, place + "\\New", workOn64BitView).openStatus(),
            ERROR_ACCESS_DENIED);
}

TEST_F(KeyAccessTest, AKeyThatTheUserMayNotOpenFails) {
  setAccessOfKey(key, "D:(A;;KR;;;WD)");
  GrantKeyAccess(form, HiveHandle::LocalMachine, place, userName());
  EXPECT_EQ(form.GrantKeyStatus, 1);
  EXPECT_EQ(accessOfKey(key).size(), 1U);
}

TEST_F(KeyAccessTest, AKeyWithoutAListGetsOneOfJustThreeEntries) {
  auto& registry = machine::Machine::current()->registry();
  registry.setSecurity(key, machine::parseSddl("D:NO_ACCESS_CONTROL"));
  GrantKeyAccess(form, HiveHandle::LocalMachine, place, userName());
  EXPECT_EQ(form.GrantKeyStatus, 0);
  EXPECT_EQ(accessOfKey(key).size(), 3U);
}

TEST_F(KeyAccessTest, AFailingCallLeavesTheKeyAsItWas) {
  const auto before = accessOfKey(key);
  auto& faults = machine::Machine::current()->faults();
  for (const auto call :
       {machine::ApiCall::RegOpenKey, machine::ApiCall::RegGetKeySecurity,
        machine::ApiCall::RegSetKeySecurity, machine::ApiCall::LookupAccountName}) {
    faults.clear();
    faults.fail(call, 1, ERROR_ACCESS_DENIED);
    GrantKeyAccess(form, HiveHandle::LocalMachine, place, userName());
    EXPECT_EQ(form.GrantKeyStatus, 1);
    faults.clear();
    EXPECT_EQ(accessOfKey(key), before);
  }
}

}  // namespace
}  // namespace zelvreg
