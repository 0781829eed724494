#include "scanners/FirewallRules.h"

#include <functional>

#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/ScannerFixture.h"

namespace zelvreg {
namespace {

using fixture::Texts;

const std::string subKey =
    "SYSTEM\\CurrentControlSet\\services\\SharedAccess\\Parameters\\FirewallPolicy\\FirewallRules";
const std::string rulesKey = "HKEY_LOCAL_MACHINE\\" + subKey;
using fixture::countKey;
const std::string folder = "C:\\FirewallRulesTest\\";

class FirewallRulesTest : public fixture::ScannerFixture {
 protected:
  FirewallRulesTest() {
    emptyKey(rulesKey);
    emptyKey(countKey);
    makeFile(folder + "There.exe");
    for (const char* category : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"}) {
      form.View1.setText(form.View1.add(category), statusColumn, "");
    }
  }

  // A rule for one program.
  static std::string ruleFor(const std::string& program) {
    return "v2.10|Action=Allow|Active=TRUE|Dir=In|App=" + program + "|Name=A Rule|";
  }
  static void setRule(const std::string& name, const std::string& rule) {
    setText(rulesKey, name, rule);
  }

  static Texts finding(const std::string& name, const std::string& rule) {
    return {rule, name, "11", "HKEY_LOCAL_MACHINE", subKey, "l"};
  }

  Texts noteWhileScanning(const std::function<std::string()>& note) {
    return noteDuring(Command32, note);
  }

  std::string cell() const { return form.View1.text(11, problemsColumn); }

  const std::string goneRule = ruleFor(folder + "Gone.exe");
  const std::string thereRule = ruleFor(folder + "tHERE.exe");
};

TEST_F(FirewallRulesTest, ARuleForAMissingProgramIsReportedWithItsTextInItsOwnCase) {
  setRule("{A Rule}", goneRule);
  Command32(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding("{A Rule}", goneRule)}));
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_EQ(form.View2.rowInView(), 1U);
  EXPECT_EQ(cell(), "1");
  EXPECT_EQ(form.Text1.text(), "1");
  EXPECT_EQ(storedText(countKey, "reg-count"), "1");
}

TEST_F(FirewallRulesTest, OnlyAMissingProgramWithAFolderIsReported) {
  struct Case {
    std::string rule;
    bool isReported;
  };
  const std::vector<Case> cases{
      {thereRule, false},
      {ruleFor("gone.exe"), false},
      {ruleFor("System"), false},
      {ruleFor(""), false},
      {ruleFor("  "), false},
      {ruleFor("%gone%.exe"), false},
      {ruleFor("%SystemDrive%\\FirewallRulesTest\\There.exe"), false},
      {ruleFor("%SystemDrive%\\FirewallRulesTest\\gone.exe"), true},
      {ruleFor("%no such variable%\\There.exe"), true},
      {ruleFor("%ProgramFiles%\\FirewallRulesTest\\There64.exe"), false},
      {ruleFor("\\gone.exe"), true},
      {"v2.10|Action=Allow|Svc=C:\\FirewallRulesTest\\gone.exe|Name=A|", false},
      {"v2.10|Action=Allow|LocalApp=C:\\FirewallRulesTest\\gone.exe|Name=A|", false},
      {"v2.10|APP=C:\\FirewallRulesTest\\gone.exe|Name=A|", true},
      {"v2.10|App=C:\\FirewallRulesTest\\There.exe|App=C:\\gone.exe|", false},
      {"", false},
      {"v2", false},
      // Without an application the text from its fifth character on is taken for it.
      {"v2.1C:\\FirewallRulesTest\\gone.exe|Name=A|", true},
      {"v2.1C:\\FirewallRulesTest\\There.exe|Name=A|", false},
      // Without a bar after the application there is none.
      {"v2.10|App=C:\\FirewallRulesTest\\gone.exe", false},
  };
  makeFile("C:\\Program Files\\FirewallRulesTest\\There64.exe");
  for (const Case& each : cases) {
    SCOPED_TRACE(each.rule);
    setRule("rule", each.rule);
    form.View2.clear();
    Command32(form);
    EXPECT_EQ(findings(), each.isReported ? (std::vector<Texts>{finding("rule", each.rule)})
                                          : std::vector<Texts>{});
    EXPECT_EQ(cell(), each.isReported ? "1" : "0");
  }
}

TEST_F(FirewallRulesTest, ARuleWithoutABarAfterItsApplicationIsJudgedByTheRuleBefore) {
  const std::string open = "v2.10|App=" + folder + "There.exe";
  setRule("a", open);
  setRule("b", goneRule);
  setRule("c", open);
  setRule("d", thereRule);
  setRule("e", "v2.10|App=" + folder + "gone.exe");
  form.FirewallPath = folder + "gone too.exe";
  Command32(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding("b", goneRule), finding("c", open)}));
}

TEST_F(FirewallRulesTest, SoIsAValueThatIsNoTextOrAnEmptyOne) {
  setNumber(rulesKey, "a", 1);
  setRule("b", goneRule);
  setNumber(rulesKey, "c", 1);
  setRule("d", "");
  setRule("e", thereRule);
  setBytes(rulesKey, "f", REG_BINARY, goneRule);
  Command32(form);
  EXPECT_EQ(findings(),
            (std::vector<Texts>{finding("b", goneRule), finding("c", ""), finding("d", "")}));
}

TEST_F(FirewallRulesTest, AnExpandableRuleIsReadToo) {
  setText(rulesKey, "a", goneRule, REG_EXPAND_SZ);
  Command32(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding("a", goneRule)}));
}

TEST_F(FirewallRulesTest, NeitherSubkeysNorOtherListsAreWalked) {
  setText(rulesKey + "\\Below", "a", goneRule);
  const std::string policy = rulesKey.substr(0, rulesKey.rfind('\\'));
  setText(policy + "\\RestrictedServices\\Static\\System", "a", goneRule);
  setText(policy, "a", goneRule);
  Command32(form);
  EXPECT_EQ(findings(), std::vector<Texts>{});
}

TEST_F(FirewallRulesTest, TheDefaultValueIsLookedAtOnlyWhereThereIsNoRule) {
  setRule("", goneRule);
  Command32(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding("", goneRule)}));
  setRule("a", thereRule);
  form.View2.clear();
  Command32(form);
  EXPECT_EQ(findings(), std::vector<Texts>{});
}

TEST_F(FirewallRulesTest, ANameIsReadAndReportedWithoutTheBlanksAroundIt) {
  setRule(" a ", thereRule);
  setRule("a", goneRule);
  Command32(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding("a", goneRule), finding("a", goneRule)}));
  EXPECT_EQ(fixture::entriesOf(form.List1), (Texts{" a ", "a"}));
  EXPECT_EQ(fixture::entriesOf(form.List2), (Texts{"a", "a"}));
}

TEST_F(FirewallRulesTest, EachFindingGetsItsOwnRowAndIsListed) {
  form.View2.add("class");
  form.List1.add("stale");
  form.List2.add("stale");
  setRule("a", goneRule);
  setRule("b", goneRule);
  Command32(form);
  EXPECT_EQ(findings(),
            (std::vector<Texts>{
                {"class", "", "", "", "", ""}, finding("a", goneRule), finding("b", goneRule)}));
  EXPECT_EQ(fixture::entriesOf(form.List1), (Texts{"a", "b"}));
  EXPECT_EQ(fixture::entriesOf(form.List2), (Texts{"a", "b"}));
  EXPECT_EQ(form.View2.rowInView(), 3U);
  EXPECT_EQ(cell(), "2");
  EXPECT_EQ(form.Text1.text(), "3");
}

TEST_F(FirewallRulesTest, TheCellStaysEmptyUntilSomethingIsFound) {
  setRule("a", thereRule);
  setRule("b", goneRule);
  setRule("c", thereRule);
  EXPECT_EQ(noteWhileScanning([this] { return cell(); }), (Texts{"", "", "1"}));
}

TEST_F(FirewallRulesTest, EachFindingIsKeptInTheRunningTotal) {
  form.totalFound = 40;
  setRule("a", goneRule);
  setRule("b", goneRule);
  EXPECT_EQ(noteWhileScanning([] { return storedText(countKey, "reg-count"); }),
            (Texts{"(none)", "41"}));
  EXPECT_EQ(storedText(countKey, "reg-count"), "42");
  EXPECT_EQ(form.totalFound, 42);
}

TEST_F(FirewallRulesTest, TheCountIsMarkedBoldAndRedOnlyAtTheEndAndInAnyCase) {
  const CellStyle marked{.isBold = true, .color = 192};
  setRule("a", goneRule);
  setRule("b", thereRule);
  form.messages.serveHost = [&] {
    EXPECT_EQ(form.View1.cellStyle(11, problemsColumn), CellStyle{});
  };
  Command32(form);
  EXPECT_EQ(form.View1.cellStyle(11, problemsColumn), marked);
  EXPECT_EQ(form.View1.cellStyle(11, statusColumn), CellStyle{});
  form.View1.setCellStyle(11, problemsColumn, {});
  emptyKey(rulesKey);
  Command32(form);
  EXPECT_EQ(form.View1.cellStyle(11, problemsColumn), marked);
  EXPECT_EQ(cell(), "0");
}

TEST_F(FirewallRulesTest, AMissingListTakesOneTurnAndShowsZero) {
  removeKey(rulesKey);
  form.View2.add("class");
  EXPECT_EQ(noteWhileScanning([this] { return cell(); }), (Texts{""}));
  EXPECT_EQ(cell(), "0");
  EXPECT_EQ(form.Text1.text(), "1");
  EXPECT_EQ(storedText(countKey, "reg-count"), "(none)");
}

TEST_F(FirewallRulesTest, ACancelEndsTheWalk) {
  setRule("a", goneRule);
  setRule("b", goneRule);
  form.messages.post([this] {
    form.Text2.setText("2");
    form.cancelRequested = true;
  });
  Command32(form);
  EXPECT_EQ(form.View2.count(), 1U);
}

TEST_F(FirewallRulesTest, TheSpellingOfTheSystemsKeysPlaysNoPart) {
  form.ntSpelling = 2;
  setRule("a", goneRule);
  Command32(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding("a", goneRule)}));
  EXPECT_EQ(form.ntSpelling, 2);
}

TEST_F(FirewallRulesTest, TheStatusLineNamesTheCategory) {
  Command32(form);
  EXPECT_EQ(form.Label4.caption.get(), "Invalid Firewall settings");
}

}  // namespace
}  // namespace zelvreg
