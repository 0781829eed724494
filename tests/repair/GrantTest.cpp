// The rights that a repair gives: on what goes, for as long as it takes.
#include "form/Form42.h"
#include "repair/GuardFixture.h"

namespace zelvreg::fixture {
namespace {

const std::string machineKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\GrantTest";
const std::string userKey = "HKEY_CURRENT_USER\\SOFTWARE\\GrantTest";

class GrantTest : public GuardFixture {
 protected:
  GrantTest() {
    removeKey(userKey);
    setText(machineKey, "dead", deadFile);
    setText(machineKey, "living", livingFile);
  }
  ~GrantTest() override {
    removeKey(machineKey);
    removeKey(userKey);
  }

  // A row of an uninstall record, whose repair gives rights on the local machine's key.
  void repairValueOf(const char* root) {
    add({"x", "dead", "135", root, "SOFTWARE\\GrantTest", ""});
    runRepair(form);
  }
};

TEST_F(GrantTest, WhereTheKeyStaysItsListIsAsItWas) {
  const auto before = accessOfKey(machineKey);
  repairValueOf("HKEY_LOCAL_MACHINE");
  EXPECT_EQ(storedText(machineKey, "dead"), "(none)");
  EXPECT_EQ(accessOfKey(machineKey), before);
}

TEST_F(GrantTest, ForAUsersRecordNothingIsGivenOnTheComputers) {
  setText(userKey, "dead", deadFile);
  const auto before = accessOfKey(machineKey);
  repairValueOf("HKEY_CURRENT_USER");
  EXPECT_EQ(storedText(userKey, "dead"), "(none)");
  EXPECT_EQ(storedText(machineKey, "dead"), deadFile);
  EXPECT_EQ(accessOfKey(machineKey), before);
}

TEST_F(GrantTest, ForADeleteThatIsSparedNothingIsGiven) {
  const std::string list =
      "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
  makeKey(list);
  const auto before = accessOfKey(list);
  add({"x", "", "133", "HKEY_LOCAL_MACHINE",
       "Software\\Microsoft\\windows\\currentversion\\Uninstall\\", ""});
  runRepair(form);
  EXPECT_EQ(accessOfKey(list), before);
}

TEST_F(GrantTest, ToTheLetterTheListStaysAsTheRepairHasSetIt) {
  form.safeguards.protects = false;
  const auto before = accessOfKey(machineKey);
  repairValueOf("HKEY_LOCAL_MACHINE");
  EXPECT_NE(accessOfKey(machineKey), before);
}

}  // namespace
}  // namespace zelvreg::fixture
