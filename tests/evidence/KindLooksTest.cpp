#include "evidence/KindLooks.h"

#include "evidence/Reasons.h"
#include "evidence/SecondLook.h"
#include "scan/Findings.h"
#include "scan/ScannedKeys.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string ours = "Software\\KindTest";
const std::string place = "HKEY_CURRENT_USER\\" + ours;

class KindLooksTest : public fixture::ComputerFixture {
 protected:
  KindLooksTest() {
    emptyKey(place);
    makeFile("C:\\KindTest\\there.hlp");
    form.safeguards = {};
  }
  ~KindLooksTest() override { removeKey(place); }

  // What a second look says of a row of this kind for a value of a key, or for the key itself where
  // the kind is about one.
  std::string reasonsOf(const char* kind, const std::string& name, const std::string& key = ours,
                        const char* root = "HKEY_CURRENT_USER") {
    form.View2.clear();
    ScannerRun counts;
    addRow(form, counts,
           {.location = ours,
            .badValue = name,
            .kindCode = kind,
            .rootName = root,
            .subKey = key,
            .iconKey = ""});
    lookAgain(form);
    return reasonCodes(*evidenceOf(form, 1));
  }
  std::string reasonsOfText(const char* kind, const std::string& name, const std::string& text) {
    emptyKey(place);
    setText(place, name, text);
    return reasonsOf(kind, name);
  }
};

TEST_F(KindLooksTest, AFirewallRuleIsAboutTheProgramThatItNames) {
  const std::string rules = scannedKeys::firewallRules;
  const auto rule = [&](const std::string& fields) {
    setText("HKEY_LOCAL_MACHINE\\" + rules, "KindTest", "v2.10|Action=Allow|" + fields);
    return reasonsOf("11", "KindTest", rules, "HKEY_LOCAL_MACHINE");
  };
  EXPECT_EQ(rule("App=C:\\KindTest\\there.hlp|"), "found");
  EXPECT_EQ(rule("App=C:\\KindTest\\gone.exe|"), "absent");
  EXPECT_EQ(rule("App=System|"), "not-a-path");
  EXPECT_EQ(rule("app= SYSTEM |"), "not-a-path");
  EXPECT_EQ(rule("App=|"), "rule-without-path");
  EXPECT_EQ(rule("AppPkgId=S-1-15-2-1|"), "packaged-app");
  emptyKey("HKEY_LOCAL_MACHINE\\" + rules);
}

TEST_F(KindLooksTest, ARecordsValueIsJudgedOnlyIfItIsAPath) {
  EXPECT_EQ(reasonsOfText("135", "UninstallString", "C:\\KindTest\\gone.exe"), "absent");
  EXPECT_EQ(reasonsOfText("135", "UninstallString", " "), "no-text");
  EXPECT_EQ(reasonsOfText("135", "UninstallString", "some text"), "not-a-path");
  EXPECT_EQ(reasonsOfText("135", "DisplayName", "C:\\KindTest\\gone.exe"), "not-a-path");
}

TEST_F(KindLooksTest, AHelpFileIsTheNameOfItsValueInTheFolderOfItsText) {
  EXPECT_EQ(reasonsOfText("5", "there.hlp", "C:\\KindTest"), "found");
  EXPECT_EQ(reasonsOfText("5", "there.hlp", "C:\\KindTest\\"), "found");
  EXPECT_EQ(reasonsOfText("5", "there.hlp", "C:\\KindTest\\there.hlp"), "found-inside-text");
  EXPECT_EQ(reasonsOfText("5", "there.hlp", " "), "no-text");
  EXPECT_EQ(reasonsOfText("5", "gone.hlp", "C:\\KindTest"), "absent");
}

TEST_F(KindLooksTest, AClassWhoseCodeCannotBeAskedForIsInDoubt) {
  const auto server = [&](const std::string& codeBase) {
    emptyKey(place);
    setText(place, "", "C:\\KindTest\\gone.dll");
    setText(place, "CodeBase", codeBase);
    return reasonsOf("8", "");
  };
  EXPECT_EQ(server("C:\\KindTest\\there.hlp"), "found-behind-launcher");
  EXPECT_EQ(server("C:\\KindTest\\other.dll"), "absent");
  EXPECT_EQ(server("\\\\server\\share\\code.dll"), "absent share");
}

TEST_F(KindLooksTest, OfManyVersionsOfAClassTheFirstAreLookedAt) {
  emptyKey(place);
  setText(place, "", "C:\\KindTest\\gone.dll");
  for (const char version : std::string("123456789")) {
    setText(place + "\\" + version + ".0.0.0", "CodeBase",
            std::string("C:\\KindTest\\") + (version == '9' ? "there.hlp" : "gone.dll"));
  }
  EXPECT_EQ(reasonsOf("8", ""), "absent");
  removeKey(place + "\\1.0.0.0");
  EXPECT_EQ(reasonsOf("8", ""), "found-behind-launcher");
}

TEST_F(KindLooksTest, ALibraryReferenceWithoutATextNamesNothing) {
  EXPECT_EQ(reasonsOfText("72", "", " "), "no-text");
  EXPECT_EQ(reasonsOfText("72", "", "{12345678-0000-4000-8000-000000000000}"), "not-registered");
}

}  // namespace
}  // namespace zelvreg
