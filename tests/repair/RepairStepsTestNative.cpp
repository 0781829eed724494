// Wine opens every key for an administrator and cannot be made to fail; only the emulated computer
// is sure to have a user's classes in its classes root.
#include "machine/Machine.h"
#include "machine/computer/Environment.h"
#include "repair/RepairStepsFixture.h"
#include "text/Wide.h"

namespace zelvreg::fixture {
namespace {

// All that a grant asks for, but not the right to delete the key.
constexpr const char* listWithoutDelete = "D:(A;;0x6003F;;;BA)";

class GrantedKeyTest : public RepairStepsFixture {
 protected:
  // Whether the row's repair takes this key.
  bool goes(const std::string& key, const Finding& finding) {
    setText(key, "name", "x");
    setAccessOfKey(key, listWithoutDelete);
    take(finding);
    if (!hasKey(key)) {
      return true;
    }
    removeDenied(key);
    return false;
  }
  // Whether the row's repair gives the user rights to this key.
  bool isGranted(const std::string& key, const Finding& finding) {
    makeKey(key);
    setAccessOfKey(key, listWithoutDelete);
    take(finding);
    const bool hasMore = accessOfKey(key).size() > 1;
    removeDenied(key);
    return hasMore;
  }

 private:
  static void removeDenied(const std::string& key) {
    setAccessOfKey(key, "D:(A;;KA;;;WD)");
    removeKey(key);
  }
};

TEST_F(GrantedKeyTest, EachKindThatDeletesKeysGrantsThemFirst) {
  constexpr const char* name = "RepairStepsTest";
  EXPECT_TRUE(goes(classes + "\\DefaultIcon", {" RepairStepsTest ", "", "6", "", "", ""}));
  EXPECT_TRUE(goes(classes, {name, "", "7", "", " RepairStepsTest ", ""}));
  EXPECT_TRUE(goes(classes, {" RepairStepsTest ", "", "8", "", "none", ""}));
  EXPECT_TRUE(goes(classes + "\\HELPDIR", {"none", "", "71", "", name, ""}));
  EXPECT_TRUE(goes(classes, {"none", "", "72", "", name, ""}));
  EXPECT_TRUE(
      goes("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\"
           "FileExts\\.repairstepstest",
           {"", " .repairstepstest ", "122", "", "", ""}));
  EXPECT_TRUE(goes(machine, {"", "", "133", "", " SOFTWARE\\RepairStepsTest ", ""}));
}

TEST_F(GrantedKeyTest, TheUsersNameIsReadAgainForEachRow) {
  auto& environment = zelvreg::machine::Machine::current()->environment();
  const std::string user = userName();
  const Finding row{"", "name", "135", "HKEY_LOCAL_MACHINE", "SOFTWARE\\RepairStepsTest", ""};
  makeKey(machine);
  const auto before = accessOfKey(machine);
  environment.set(u"UserName", u"no such account");
  take(row);
  EXPECT_EQ(accessOfKey(machine), before);
  environment.set(u"UserName", utf16(user));
  take(row);
  EXPECT_NE(accessOfKey(machine), before);
  setAccessOfKey(machine, "D:(A;;KA;;;WD)");
}

TEST_F(GrantedKeyTest, SomeGrantAPathAsItIs) {
  EXPECT_FALSE(goes(classes, {" RepairStepsTest", "", "7", "", "RepairStepsTest", ""}));
  EXPECT_FALSE(
      goes(classes + "\\HELPDIR", {"RepairStepsTest", "", "71", "", " RepairStepsTest", ""}));
  EXPECT_FALSE(goes(classes, {"none", "", "72", "", " RepairStepsTest", ""}));
}

TEST_F(GrantedKeyTest, TwoThatDeleteAValueGrantItsKey) {
  const char* root = "HKEY_CLASSES_ROOT";
  EXPECT_TRUE(isGranted(classes, {"RepairStepsTest", "none", "771", root, "none", ""}));
  EXPECT_FALSE(isGranted(classes, {" RepairStepsTest", "none", "771", root, "none", ""}));
  // The machine's, whatever the root of the value.
  EXPECT_TRUE(isGranted(
      machine, {"", "none", "135", "HKEY_CURRENT_USER", " SOFTWARE\\RepairStepsTest ", ""}));
}

TEST_F(GrantedKeyTest, AnExtensionWithoutSubkeysGoesFromAKeyThatRefusesToBeWorkedOn) {
  const std::string extensions =
      "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts";
  for (const char* name : {"\\.leaf", "\\.tree", "\\.tree\\Below"}) {
    makeKey(extensions + name);
  }
  setAccessOfKey(extensions, "D:(A;;KR;;;BA)");
  take({"", ".leaf", "122", "", "", ""});
  take({"", ".tree", "122", "", "", ""});
  EXPECT_FALSE(hasKey(extensions + "\\.leaf"));
  EXPECT_TRUE(hasKey(extensions + "\\.tree"));
}

class ClassesStepsTest : public RepairStepsFixture {
 protected:
  const std::string own = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\CLSID\\{RepairStepsTest}";
  const std::string other =
      "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Wow6432Node\\CLSID\\{RepairStepsTest}";
};

TEST_F(ClassesStepsTest, AnIconGoesFromTheUsersClassAndFromTheMachines) {
  const std::string usersIcon =
      "HKEY_CURRENT_USER\\Software\\Classes\\RepairStepsTest\\DefaultIcon";
  makeKey(usersIcon);
  makeKey(classes + "\\DefaultIcon\\Below");
  take({"RepairStepsTest", "", "6", "", "", ""});
  EXPECT_FALSE(hasKey(usersIcon));
  EXPECT_FALSE(hasKey(classes + "\\DefaultIcon"));
}

TEST_F(ClassesStepsTest, ALibraryReferenceGoesInBothViews) {
  makeKey(own + "\\TypeLib\\Below");
  makeKey(other + "\\TypeLib");
  take({"", "", "72", "", "CLSID\\{RepairStepsTest}\\TypeLib", ""});
  EXPECT_FALSE(hasKey(own + "\\TypeLib"));
  EXPECT_FALSE(hasKey(other + "\\TypeLib"));
  EXPECT_TRUE(hasKey(own));
  EXPECT_TRUE(hasKey(other));
}

TEST_F(ClassesStepsTest, TheOtherViewIsAskedForTheReferenceAsItIs) {
  makeKey(own + "\\TypeLib");
  makeKey(other + "\\TypeLib");
  take({"", "", "72", "", " CLSID\\{RepairStepsTest}\\TypeLib", ""});
  EXPECT_FALSE(hasKey(own + "\\TypeLib"));
  EXPECT_TRUE(hasKey(other + "\\TypeLib"));
}

TEST_F(ClassesStepsTest, TheLastDeleteOfAFileClassRunsOnlyIfTheFirstFailed) {
  auto& faults = machine::Machine::current()->faults();
  for (const bool firstFails : {false, true}) {
    makeKey("HKEY_CURRENT_USER\\Software\\Classes\\RepairStepsTest");
    makeKey(classes);
    faults.clear();
    // The tree and the provider's key are the second and the third.
    faults.fail(machine::ApiCall::RegDeleteKey, 2, ERROR_ACCESS_DENIED);
    faults.fail(machine::ApiCall::RegDeleteKey, 3, ERROR_ACCESS_DENIED);
    if (firstFails) {
      faults.fail(machine::ApiCall::RegDeleteKey, 1, ERROR_ACCESS_DENIED);
    }
    take({"RepairStepsTest", "", "7", "", "RepairStepsTest", ""});
    // It takes one per call, and the user's before the machine's.
    EXPECT_EQ(faults.calls(machine::ApiCall::RegDeleteKey), firstFails ? 4U : 3U);
    EXPECT_FALSE(hasKey("HKEY_CURRENT_USER\\Software\\Classes\\RepairStepsTest"));
    EXPECT_TRUE(hasKey(classes));
  }
}

TEST_F(ClassesStepsTest, AServerThatCannotGoLosesItsDefaultValueAndTheOtherViewIsEmptied) {
  setText(own, "", "x");
  makeKey(own + "\\Below");
  setAccessOfKey(own + "\\Below", listWithoutDelete);
  setText(other, "", "y");
  take({"CLSID\\{RepairStepsTest}", "", "8", "", "none", ""});
  EXPECT_EQ(storedText(own, ""), "(none)");
  EXPECT_TRUE(hasKey(own + "\\Below"));
  EXPECT_EQ(storedText(other, ""), "");
}

}  // namespace
}  // namespace zelvreg::fixture
