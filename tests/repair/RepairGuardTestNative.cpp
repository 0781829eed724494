// Wine's classes root does not lay the user's classes over the computer's.
#include "form/Form42.h"
#include "repair/GuardFixture.h"
#include "scanners/DefaultIcons.h"
#include "scanners/FileClasses.h"
#include "scanners/ServerFiles.h"

namespace zelvreg::fixture {
namespace {

class MergedGuardTest : public GuardFixture {
 protected:
  ~MergedGuardTest() override {
    for (const std::string& classes : {machineClasses, userClasses}) {
      removeKey(classes + "GuardTest");
      removeKey(classes + "CLSID\\{GuardTest}");
    }
  }
};

TEST_F(MergedGuardTest, AUsersDeadIconGoesAndTheComputersLivingOneStays) {
  setText(userClasses + "GuardTest\\DefaultIcon", "", deadFile + ",1");
  setText(machineClasses + "GuardTest\\DefaultIcon", "", livingFile + ",1");
  repairFound(Command10);
  EXPECT_EQ(found, 1U);
  EXPECT_FALSE(hasKey(userClasses + "GuardTest\\DefaultIcon"));
  EXPECT_EQ(storedText(machineClasses + "GuardTest\\DefaultIcon", ""), livingFile + ",1");
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(MergedGuardTest, AUsersDeadCommandGoesAndTheComputersLivingOneStays) {
  const std::string command = "GuardTest\\shell\\open\\command";
  setText(userClasses + command, "", deadFile + " %1");
  setText(machineClasses + command, "", livingFile + " %1");
  repairFound(Command12);
  EXPECT_EQ(found, 1U);
  EXPECT_FALSE(hasKey(userClasses + command));
  EXPECT_EQ(storedText(machineClasses + command, ""), livingFile + " %1");
}

TEST_F(MergedGuardTest, AUsersServersTextIsNoKeyThatItsRepairMayDelete) {
  setText(machineClasses + "GuardTest\\shell\\open\\command", "", livingFile);
  setText(userClasses + "CLSID\\{GuardTest}\\InprocServer32", "", "guardtest\\shell");
  repairFound(cln7);
  EXPECT_EQ(found, 1U);
  EXPECT_EQ(storedText(machineClasses + "GuardTest\\shell\\open\\command", ""), livingFile);
  EXPECT_TRUE(isLeftAlone(machineClasses + "guardtest\\shell"));
}

// The user's list would let everybody write what all users run.
TEST_F(MergedGuardTest, TheListOfAUsersClassThatGoesIsNotGivenToTheComputers) {
  const std::string icon = "GuardTest\\DefaultIcon";
  setText(userClasses + icon, "", deadFile);
  setAccessOfKey(userClasses + icon, "D:(A;CI;KA;;;WD)");
  setText(machineClasses + icon, "", livingFile);
  const auto before = accessOfKey(machineClasses + icon);
  add({"GuardTest", deadFile, "6", "HKEY_CLASSES_ROOT", "\\defaulticon", ""});
  runRepair(form);
  EXPECT_FALSE(hasKey(userClasses + icon));
  EXPECT_EQ(accessOfKey(machineClasses + icon), before);
}

}  // namespace
}  // namespace zelvreg::fixture
