#include "repair/NamedRecord.h"

#include "form/Form42.h"
#include "keys/OpenKey.h"
#include "repair/GuardFixture.h"
#include "scan/ScannedKeys.h"
#include "text/Wide.h"

namespace zelvreg::fixture {
namespace {

const std::string hklm = "HKEY_LOCAL_MACHINE";
const std::string hkcu = "HKEY_CURRENT_USER";
const std::string vendor = "Software\\NamedRecordTest";
const std::string firewall = hklm + "\\" + scannedKeys::firewallRules;

class NamedRecordTest : public GuardFixture {
 protected:
  NamedRecordTest() { removeKeys(); }
  ~NamedRecordTest() override { removeKeys(); }

  static void removeKeys() {
    for (const std::string& root : {hklm, hkcu}) {
      removeKey(root + "\\" + vendor);
    }
  }

  // The full path of what a row names, in lower case; "none" if it names nothing.
  std::string named(const Finding& finding) {
    ScannerRun run;
    addRow(form, run, finding);
    const auto record = namedRecord(form, RegistryState(), form.View2.count(),
                                    *repairKind(std::stoi(std::string(finding.kindCode))));
    doubt = record ? record->doubt : "";
    return record ? lowerCase(utf8(record->place.text())) : "none";
  }

  std::string doubt;
};

TEST_F(NamedRecordTest, AValueIsNamedInItsRootAsItIs) {
  setText(hkcu + "\\" + vendor, "name", "x");
  EXPECT_EQ(named({"x", "name", "144", hkcu, vendor, ""}),
            "hkey_current_user\\software\\namedrecordtest, value \"name\"");
  EXPECT_EQ(named({"x", "name", "144", hklm, vendor, ""}), "none");
  EXPECT_EQ(named({"x", " name ", "144", hkcu, vendor, ""}), "none");
}

TEST_F(NamedRecordTest, AnApplicationPathIsTheProgramsKeyNotAValueOfTheList) {
  const std::string list = scannedKeys::appPaths;
  setText(hklm + "\\" + list, "NamedRecordTest.exe", "a value of that name");
  EXPECT_EQ(named({"x", "NamedRecordTest.exe", "3", hklm, list, ""}), "none");
  setText(hklm + "\\" + list + "\\NamedRecordTest.exe", "", deadFile);
  EXPECT_EQ(named({"x", "NamedRecordTest.exe", "3", hklm, list, ""}),
            lowerCase(hklm + "\\" + list + "\\NamedRecordTest.exe, value \"\""));
  removeKey(hklm + "\\" + list + "\\NamedRecordTest.exe");
  const OpenKey open(HiveHandle::LocalMachine, list, workOn64BitView);
  RegDeleteValueW(open.handle(), Wide("NamedRecordTest.exe").get());
}

TEST_F(NamedRecordTest, OfTwoHelpListsTheFirstIsNamedThatHasAText) {
  const std::string help = hklm + "\\" + scannedKeys::help;
  const std::string helpNt = hklm + "\\" + scannedKeys::helpNt;
  const Finding row{"x", "NamedRecordTest.hlp", "4", hklm, scannedKeys::help, ""};
  setText(help, "NamedRecordTest.hlp", "C:\\gone");
  setText(helpNt, "NamedRecordTest.hlp", "C:\\living");
  EXPECT_EQ(named(row), lowerCase(help + ", value \"NamedRecordTest.hlp\""));
  setText(help, "NamedRecordTest.hlp", " ");
  EXPECT_EQ(named(row), lowerCase(helpNt + ", value \"NamedRecordTest.hlp\""));
  for (const char* key : {scannedKeys::help, scannedKeys::helpNt}) {
    const OpenKey open(HiveHandle::LocalMachine, key, workOn64BitView);
    RegDeleteValueW(open.handle(), Wide("NamedRecordTest.hlp").get());
  }
}

TEST_F(NamedRecordTest, OfTwoTopicsTheFirstIsNamedThatHasAText) {
  setText(hklm + "\\" + vendor, "LinkedHelpTopics", "x");
  EXPECT_TRUE(named({"x", "", "55", hklm, vendor, ""}).ends_with("value \"linkedhelptopics\""));
  setText(hklm + "\\" + vendor, "HelpTopic", "x");
  EXPECT_TRUE(named({"x", "", "55", hklm, vendor, ""}).ends_with("value \"helptopic\""));
}

TEST_F(NamedRecordTest, AFirewallRuleIsDoubtedUnlessItsOwnProgramIsGone) {
  const auto doubtOf = [&](const std::string& rule) {
    setText(firewall, "NamedRecordTest", rule);
    named({rule, "NamedRecordTest", "11", hklm, scannedKeys::firewallRules, ""});
    return doubt;
  };
  form.FirewallPath = "c:\\before.exe";
  EXPECT_EQ(doubtOf("v2.30|App=" + deadFile + "|Name=x|"), "");
  EXPECT_NE(doubtOf("v2.30|App=" + livingFile + "|Name=x|"), "");
  EXPECT_NE(doubtOf("no bar at all"), "");
  EXPECT_EQ(form.FirewallPath, "c:\\before.exe");
  const OpenKey open(HiveHandle::LocalMachine, scannedKeys::firewallRules, workOn64BitView);
  RegDeleteValueW(open.handle(), Wide("NamedRecordTest").get());
}

TEST_F(NamedRecordTest, ATextOfTheUsersOwnIsNotDoubted) {
  const std::string user = utf8(currentUserKey());
  ASSERT_TRUE(user.starts_with("S-1-5-21-")) << user;
  setText(hkcu + "\\" + vendor, "name", "%USERPROFILE%\\gone.exe");
  EXPECT_NE(named({"x", "name", "12", "HKEY_USERS", user + "\\" + vendor, ""}), "none");
  EXPECT_EQ(doubt, "");
}

TEST_F(NamedRecordTest, ATextOfAnotherUserWithAVariableOfThatUserIsDoubted) {
  const std::string other = ".DEFAULT\\" + vendor;
  for (const auto& [text, isDoubted] :
       {std::pair{"%USERPROFILE%\\gone.exe", true}, std::pair{"%SystemRoot%\\%MINE%\\x", true},
        std::pair{"%windir%\\gone.exe", false}, std::pair{"C:\\gone.exe", false}}) {
    setText("HKEY_USERS\\" + other, "name", text);
    EXPECT_NE(named({"x", "name", "12", "HKEY_USERS", other, ""}), "none");
    EXPECT_EQ(!doubt.empty(), isDoubted) << text;
  }
  removeKey("HKEY_USERS\\" + other);
}

}  // namespace
}  // namespace zelvreg::fixture
