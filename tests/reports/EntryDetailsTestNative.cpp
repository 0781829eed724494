// Only the emulated computer notes the programs that are started and ended, and runs none.
#include "machine/Machine.h"
#include "machine/computer/Processes.h"
#include "reports/EditorProcess.h"
#include "reports/EntryDetails.h"
#include "scan/Findings.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

// By its full path: a program of that name beside ours is not started.
constexpr const char* editor = "\"C:\\Windows\\regedit.exe\"";

using Texts = std::vector<std::string>;

const std::string editorKey =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Applets\\Regedit";

class EntryDetailsNativeTest : public fixture::ComputerFixture {
 protected:
  EntryDetailsNativeTest() {
    emptyKey(editorKey);
    setText(editorKey, "LastKey", "before");
    bindClicks(form);
  }

  void add(const char* rootName, const char* subKey) {
    ScannerRun run;
    addRow(form, run, {"location", "bad value", "2", rootName, subKey, "a"});
  }
  static std::string lastKey() { return storedText(editorKey, "LastKey"); }
  static machine::Processes& processes() { return machine::Machine::current()->processes(); }
};

TEST_F(EntryDetailsNativeTest, TheEditorStartsAtTheKeyOfTheRow) {
  add("HKEY_USERS", "not this");
  add("HKEY_LOCAL_MACHINE", "Software\\There is no such key");
  View2_ItemClick(form, 2);
  View2_DblClick(form);
  EXPECT_EQ(lastKey(), "HKEY_LOCAL_MACHINE\\Software\\There is no such key");
  EXPECT_EQ(processes().started, (Texts{editor}));
  EXPECT_EQ(processes().ended, Texts());
}

TEST_F(EntryDetailsNativeTest, ButtonAndMenuOpenItAsWell) {
  add("HKEY_USERS", "a");
  View2_ItemClick(form, 1);
  form.chameleonButton14.click();
  EXPECT_EQ(lastKey(), "HKEY_USERS\\a");
  setText(editorKey, "LastKey", "before");
  form.e.click();
  EXPECT_EQ(lastKey(), "HKEY_USERS\\a");
  EXPECT_EQ(processes().started, (Texts{editor, editor}));
}

TEST_F(EntryDetailsNativeTest, TheFirstRunningEditorIsEndedAndNoOther) {
  processes().running = {"explorer.exe", "RegEdit.EXE", "regedit.exe", "regedit.exe.exe"};
  add("HKEY_USERS", "a");
  View2_ItemClick(form, 1);
  View2_DblClick(form);
  EXPECT_EQ(processes().ended, (Texts{"RegEdit.EXE"}));
  EXPECT_EQ(processes().running, (Texts{"explorer.exe", "regedit.exe", "regedit.exe.exe"}));
  EXPECT_EQ(lastKey(), "HKEY_USERS\\a");
  EXPECT_EQ(processes().started, (Texts{editor}));
}

TEST_F(EntryDetailsNativeTest, OtherProgramsRunOn) {
  processes().running = {"my regedit.exe", "regedit", "regedit.exe2"};
  killprocess();
  EXPECT_EQ(processes().ended, Texts());
  EXPECT_EQ(processes().running.size(), 3U);
}

TEST_F(EntryDetailsNativeTest, ARowWithoutARootEndsTheEditorAndStartsNone) {
  processes().running = {"regedit.exe"};
  add("  ", "a");
  View2_ItemClick(form, 1);
  View2_DblClick(form);
  EXPECT_EQ(processes().ended, (Texts{"regedit.exe"}));
  EXPECT_EQ(lastKey(), "before");
  EXPECT_EQ(processes().started, Texts());
}

TEST_F(EntryDetailsNativeTest, WithoutAClickTheEditorStartsAtNoKey) {
  add("HKEY_USERS", "a");
  View2_DblClick(form);
  EXPECT_EQ(lastKey(), "");
  EXPECT_EQ(processes().started, (Texts{editor}));
}

TEST_F(EntryDetailsNativeTest, ARowThatHasGoneIsNoRow) {
  add("HKEY_USERS", "a");
  View2_ItemClick(form, 1);
  form.View2.clear();
  View2_DblClick(form);
  EXPECT_EQ(lastKey(), "");
  EXPECT_EQ(processes().started, (Texts{editor}));
}

TEST_F(EntryDetailsNativeTest, TheSuitesEditorGetsTheKeyOfTheRow) {
  add("HKEY_USERS", "Software\\a key");
  View2_ItemClick(form, 1);
  form.Command28.click();
  EXPECT_EQ(processes().started,
            (Texts{"\"" + form.programFolder + "\\zelvrege.exe\" HKEY_USERS\\Software\\a key"}));
  EXPECT_EQ(lastKey(), "before");
}

TEST_F(EntryDetailsNativeTest, TheSuitesEditorGetsNoKeyWithoutAClick) {
  form.Command28.click();
  EXPECT_EQ(processes().started, (Texts{"\"" + form.programFolder + "\\zelvrege.exe\" "}));
}

}  // namespace
}  // namespace zelvreg
