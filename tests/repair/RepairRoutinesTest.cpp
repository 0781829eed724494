#include "repair/RepairRoutines.h"

#include <functional>

#include "repair/RepairTable.h"
#include "scan/Findings.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string machine = "HKEY_LOCAL_MACHINE\\SOFTWARE\\RepairTest";
const std::string user = "HKEY_CURRENT_USER\\Software\\RepairTest";
const std::string classes = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\RepairTest";
const std::string windows = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows";
const std::string windowsNt = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT";
const std::string firewall =
    "HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\services\\SharedAccess\\Parameters\\"
    "FirewallPolicy\\FirewallRules";
const std::string extensions =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts";

struct Row {
  const char* location;
  const char* badValue;
  const char* kind;
  const char* rootName;
  const char* subKey;
};

class RepairRoutinesTest : public fixture::ComputerFixture {
 protected:
  RepairRoutinesTest() { removeKeys(); }
  ~RepairRoutinesTest() override { removeKeys(); }

  static void removeKeys() {
    for (const auto& key : {machine, user, classes, extensions + "\\.repairtest"}) {
      removeKey(key);
    }
  }
  void add(const Row& row) {
    ScannerRun run;
    addRow(form, run, {row.location, row.badValue, row.kind, row.rootName, row.subKey, "a"});
    form.View2.setChecked(form.View2.count(), true);
  }
};

// A kind whose repair deletes one value: the row, the routine and the value.
struct ValueKind {
  Row row;
  void (*routine)(Form42& form);
  std::string key;
  std::string name;
};

class RepairOfValues : public RepairRoutinesTest,
                       public ::testing::WithParamInterface<ValueKind> {};

TEST_P(RepairOfValues, DeletesTheValueAndTheRow) {
  const ValueKind& kind = GetParam();
  setText(kind.key, kind.name, "x");
  setText(kind.key, "RepairTest other", "stays");
  add(kind.row);
  kind.routine(form);
  EXPECT_EQ(storedText(kind.key, kind.name), "(none)");
  EXPECT_EQ(storedText(kind.key, "RepairTest other"), "stays");
  EXPECT_EQ(form.View2.count(), 0U);
}

constexpr const char* hklm = "HKEY_LOCAL_MACHINE";
constexpr const char* hkcu = "HKEY_CURRENT_USER";
constexpr const char* hkcr = "HKEY_CLASSES_ROOT";
constexpr const char* key = "Software\\RepairTest";

INSTANTIATE_TEST_SUITE_P(
    Kinds, RepairOfValues,
    ::testing::Values(
        ValueKind{{" RepairFont ", "x", "1", hklm, key},
                  deletefont,
                  windowsNt + "\\CurrentVersion\\Fonts",
                  "RepairFont"},
        ValueKind{{"RepairFont", "x", "1", hklm, key},
                  deletefont,
                  windows + "\\CurrentVersion\\Fonts",
                  "RepairFont"},
        ValueKind{{" C:\\r.dll ", "x", "2", hklm, " Software\\RepairTest "},
                  deleteshareddll,
                  machine,
                  "C:\\r.dll"},
        ValueKind{{"C:\\r.dll", "x", "2", hklm, key},
                  deleteshareddll,
                  windowsNt + "\\CurrentVersion\\SharedDlls",
                  "C:\\r.dll"},
        ValueKind{{"x", " r.hlp ", "4", hklm, key}, deletehelpfiles, windows + "\\Help", "r.hlp"},
        ValueKind{{"x", "r.hlp", "4", hklm, key}, deletehelpfiles, windowsNt + "\\Help", "r.hlp"},
        ValueKind{
            {"x", " r.chm ", "5", hklm, key}, deletehelpchm, windows + "\\HTML Help", "r.chm"},
        ValueKind{
            {"x", "r.chm", "5", hklm, key}, deletehelpchm, windowsNt + "\\HTML Help", "r.chm"},
        ValueKind{{"RepairTest", "x", "9", hkcr, key}, deleteclisidref2, classes, ""},
        ValueKind{{"RepairTest", "x", "10", hkcr, key}, deletebitmap, classes, ""},
        ValueKind{{"x", " Rule ", "11", hklm, key}, deletefirewall, firewall, "Rule"},
        ValueKind{
            {"x", " name ", "13", hklm, " Software\\RepairTest "}, deletemachine, machine, "name"},
        ValueKind{{"x", " name ", "135", hkcu, key}, deleteuninstall, user, "name"},
        ValueKind{{"x", "name", "135", hklm, key}, deleteuninstall, machine, "name"},
        ValueKind{{"x", " name ", "144", hkcu, key}, deleteMRU, user, "name"},
        ValueKind{{"x", "name", "144", hklm, key}, deleteMRU, machine, "name"},
        ValueKind{{"x", " name ", "155", hklm, key}, deleteMRUhist, user, "name"},
        ValueKind{{"x", " name ", "166", hkcu, key}, deleteMuiCache, user, "name"},
        ValueKind{
            {"x", " Extension ", "771", hkcr, "RepairTest"}, deleteprogref, classes, "Extension"}));

// A kind whose repair deletes a key with what is below it.
struct KeyKind {
  Row row;
  void (*routine)(Form42& form);
  std::string key;
};

class RepairOfKeys : public RepairRoutinesTest, public ::testing::WithParamInterface<KeyKind> {};

TEST_P(RepairOfKeys, DeletesTheKeyWithItsSubkeysAndTheRow) {
  const KeyKind& kind = GetParam();
  setText(kind.key + "\\Below\\Deeper", "", "x");
  makeKey(kind.key + " beside");
  add(kind.row);
  kind.routine(form);
  EXPECT_FALSE(hasKey(kind.key));
  EXPECT_TRUE(hasKey(kind.key + " beside"));
  EXPECT_EQ(form.View2.count(), 0U);
  removeKey(kind.key + " beside");
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, RepairOfKeys,
    ::testing::Values(KeyKind{{" RepairTest ", "x", "6", hkcr, "\\defaulticon"},
                              deleteiconref,
                              classes + "\\defaulticon"},
                      KeyKind{{"RepairTest", "x", "7", hkcr, " RepairTest\\shell\\open\\command "},
                              deleteprogref,
                              classes + "\\shell\\open\\command"},
                      KeyKind{{" RepairTest\\Server ", "", "8", hkcr, "x"},
                              deleteclissidref,
                              classes + "\\Server"},
                      KeyKind{{"RepairTest\\1.0", "Default", "71", hkcr, "RepairTest none"},
                              deleteclissidref71,
                              classes + "\\1.0\\HELPDIR"},
                      KeyKind{{"{1}", "Default", "72", hkcr, "RepairTest\\TypeLib"},
                              deleteclissidref72,
                              classes + "\\TypeLib"},
                      KeyKind{{"x", " .repairtest ", "122", hkcu, "x"},
                              deletefileext,
                              extensions + "\\.repairtest"},
                      KeyKind{{"x", "x", "133", hklm, " Software\\RepairTest\\Record "},
                              deleteuninstall,
                              machine + "\\Record"}));

TEST_F(RepairRoutinesTest, BothValuesOfASnapInGo) {
  setText(machine, "HelpTopic", "x");
  setText(machine, "LinkedHelpTopics", "x");
  add({"x", "x", "4711", hklm, key});
  add({"x", "x", "55", hklm, key});
  deletehelpfiles2(form);
  EXPECT_EQ(storedText(machine, "HelpTopic"), "(none)");
  EXPECT_EQ(storedText(machine, "LinkedHelpTopics"), "(none)");
  EXPECT_EQ(form.View2.count(), 1U);
}

TEST_F(RepairRoutinesTest, AJoinedHelpFileIsNamedAsItIs) {
  setText(machine, " r.chm", "x");
  setText(machine, "r.chm", "stays");
  add({"x", " r.chm", "56", hklm, key});
  add({"x", "x", "4711", hklm, key});
  deletehelpfiles2(form);
  EXPECT_EQ(storedText(machine, " r.chm"), "(none)");
  EXPECT_EQ(storedText(machine, "r.chm"), "stays");
}

TEST_F(RepairRoutinesTest, SnapInsAloneLeaveOneTurnToTheSecondLoop) {
  add({"x", "x", "55", hklm, key});
  int turns = 0;
  form.messages.serveHost = [&turns] { ++turns; };
  deletehelpfiles2(form);
  EXPECT_EQ(turns, 2);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(RepairRoutinesTest, AnApplicationPathLosesItsRowAndKeepsItsKey) {
  setText(machine + "\\a.exe", "", "C:\\gone.exe");
  setText(machine, "a.exe", "a value of that name");
  add({"C:\\gone.exe", "a.exe", "3", hklm, key});
  deletebadapppath(form);
  EXPECT_EQ(storedText(machine + "\\a.exe", ""), "C:\\gone.exe");
  EXPECT_EQ(storedText(machine, "a.exe"), "(none)");
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(RepairRoutinesTest, MoreApplicationPathsThanSixteenBitsCountAreAllLeft) {
  for (int row = 0; row < 32768; ++row) {
    form.View2.add("x");
  }
  add({"x", "a.exe", "3", hklm, key});
  deletebadapppath(form);
  EXPECT_EQ(form.View2.count(), 32769U);
  form.View2.remove(1);
  deletebadapppath(form);
  EXPECT_EQ(form.View2.count(), 32768U);
  form.View2.remove(1);
  deletebadapppath(form);
  EXPECT_EQ(form.View2.count(), 32766U);
}

TEST_F(RepairRoutinesTest, AClassOfTheUserIsTakenForAFirewallRule) {
  setText(user, "", "C:\\gone.dll");
  add({"c:\\gone.dll", "", "11", hkcu, key});
  deletefirewall(form);
  EXPECT_EQ(storedText(user, ""), "C:\\gone.dll");
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(RepairRoutinesTest, WhatTheFirewallLeftWouldBeRepairedAsAUsersClass) {
  setText(user, "name", "x");
  add({"x", " name ", "11", hklm, " Software\\RepairTest "});
  deleteusers(form);
  EXPECT_EQ(storedText(user, "name"), "(none)");
}

TEST_F(RepairRoutinesTest, AnUntickedRowIsLeftAloneAmongTickedOnes) {
  for (const char* name : {"a", "b", "c"}) {
    setText(user, name, "x");
    add({"x", name, "155", hkcu, key});
  }
  form.View2.setChecked(2, false);
  deleteMRUhist(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.View2.text(1, badValueColumn), "b");
  EXPECT_EQ(storedText(user, "b"), "x");
  EXPECT_EQ(storedText(user, "a"), "(none)");
}

TEST_F(RepairRoutinesTest, AKindIsComparedAsANumber) {
  for (const char* kind : {" 155", "155.0", "155x"}) {
    add({"x", "gone", kind, hkcu, key});
  }
  add({"x", "gone", "15", hkcu, key});
  deleteMRUhist(form);
  EXPECT_EQ(form.View2.count(), 1U);
}

TEST_F(RepairRoutinesTest, ARowWhoseKeyHasVanishedGoesAllTheSame) {
  add({"x", "gone", "144", hkcu, "Software\\RepairTest\\Vanished"});
  deleteMRU(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(RepairRoutinesTest, ARootThatIsNotKnownIsThatOfTheRowRepairedBefore) {
  setText(user, "name", "x");
  add({"x", "name", "166", "HKEY_USERS", key});
  add({"x", "other", "166", hkcu, key});
  deleteMuiCache(form);
  EXPECT_EQ(storedText(user, "name"), "(none)");
}

TEST_F(RepairRoutinesTest, ARecordWithoutANameSparesTheListOfAllRecords) {
  form.safeguards = {};
  const std::string list = windows + "\\CurrentVersion\\Uninstall";
  makeKey(list + "\\RepairTest");
  add({"x", "", "133", hklm, "Software\\Microsoft\\windows\\currentversion\\Uninstall\\"});
  deleteuninstall(form);
  EXPECT_TRUE(hasKey(list + "\\RepairTest"));
  EXPECT_EQ(form.View2.count(), 1U);
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_EQ(form.repairOutcome.refused,
            (std::set<LeftAlone>{
                {"HKEY_LOCAL_MACHINE\\Software\\Microsoft\\windows\\currentversion\\Uninstall\\",
                 "records of other programs lie in it"}}));
  removeKey(list + "\\RepairTest");
}

TEST_F(RepairRoutinesTest, EachRowServesTheMessageQueue) {
  int turns = 0;
  form.messages.serveHost = [&turns] { ++turns; };
  for (int row = 1; row <= 3; ++row) {
    add({"x", "x", "4711", hkcu, key});
  }
  deleteMRU(form);
  EXPECT_EQ(turns, 3);
  deletebadapppath(form);
  EXPECT_EQ(turns, 6);
  deletehelpfiles2(form);
  EXPECT_EQ(turns, 12);
}

TEST_F(RepairRoutinesTest, EveryKindOfTheTableHasARoutineThatTakesItsRow) {
  constexpr void (*routines[])(Form42&) = {
      deletefirewall,     deletebitmap,     deleteclisidref2, deleteclissidref, deleteclissidref71,
      deleteclissidref72, deletefileext,    deleteprogref,    deleteiconref,    deletehelpchm,
      deletehelpfiles,    deletebadapppath, deleteshareddll,  deletefont,       deleteusers2,
      deletemachine,      deleteuninstall,  deleteMRU,        deleteMRUhist,    deleteMuiCache};
  for (const char* kind :
       {"1",  "2",  "3",  "4",  "5",   "6",   "7",   "8",   "9",   "10",  "11",
        "12", "13", "71", "72", "122", "133", "135", "144", "155", "166", "771"}) {
    form.View2.clear();
    form.View2.add("a row that stays");
    add({"RepairTest none", "none", kind, hklm, "RepairTest none"});
    for (const auto routine : routines) {
      routine(form);
    }
    EXPECT_EQ(form.View2.count(), 1U) << kind;
  }
}

}  // namespace
}  // namespace zelvreg
