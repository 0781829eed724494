#include "scanners/DefaultIcons.h"

#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/PaintedTexts.h"
#include "scanners/ScannerFixture.h"
#include "text/Numbers.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using fixture::Texts;

const std::string machineClasses = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\";
// Stands before all other classes.
const std::string prefix = "!DefaultIconsTest";
using fixture::countKey;
const std::string gone = "c:\\defaulticonstest\\gone.dll";
const std::string there = "c:\\defaulticonstest\\there.dll";

class DefaultIconsTest : public fixture::ScannerFixture {
 protected:
  DefaultIconsTest() {
    emptyKey(countKey);
    makeFile(there);
    for (const char* category : {"fonts", "dlls", "paths", "help", "icons"}) {
      form.View1.add(category);
    }
  }
  ~DefaultIconsTest() override {
    for (const std::string& key : made) {
      removeKey(key);
    }
  }

  void setIcon(const std::string& className, const std::string& icon, DWORD type = REG_SZ) {
    made.push_back(machineClasses + className);
    setText(made.back() + "\\DefaultIcon", "", icon, type);
  }

  static Texts finding(const std::string& className, const std::string& badValue) {
    return {className, badValue, "6", "HKEY_CLASSES_ROOT", "\\defaulticon", "e"};
  }

  // Those of the classes of the test; a real computer has others.
  std::vector<Texts> findings() const {
    std::vector<Texts> rows;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      if (form.View2.text(row, locationColumn).starts_with(prefix)) {
        rows.push_back(fixture::findingOf(form, row));
      }
    }
    return rows;
  }

  // What is reported of one class with an icon; nothing but the bad value differs.
  Texts reportedOf(const std::string& icon) {
    setIcon(prefix, icon);
    form.View2.clear();
    Command10(form);
    Texts badValues;
    for (const Texts& row : findings()) {
      EXPECT_EQ(row, finding(prefix, row[1]));
      badValues.push_back(row[1]);
    }
    return badValues;
  }

  std::string cell() const { return form.View1.text(5, problemsColumn); }

 private:
  Texts made;
};

TEST_F(DefaultIconsTest, AClassWhoseIconFileIsGoneIsReportedWithoutTheIndex) {
  setIcon(prefix + ".Class", "C:\\DefaultIconsTest\\Gone.dll,0");
  Command10(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(prefix + ".Class", gone)}));
  EXPECT_FALSE(form.View2.isChecked(1));
}

TEST_F(DefaultIconsTest, OnlyMissingFilesOnADriveAreReported) {
  struct Case {
    std::string icon;
    Texts badValues;
  };
  const std::vector<Case> cases{
      {there, {}},
      {there + ",-101", {}},
      {gone, {gone}},
      {gone + ",1,2", {gone}},
      {"  " + gone + "  ", {gone}},
      {gone + " ,1", {gone + " "}},
      {"%ProgramFiles%\\DefaultIconsTest\\gone.dll,1",
       {"C:\\Program Files\\defaulticonstest\\gone.dll"}},
      {"C:\\Windows\\System32\\gone too.dll,1", {"c:\\windows\\Sysnative\\gone too.dll"}},
      // What a variable completes to the system folder is led to the true one by the second pass.
      {"%ProgramFiles%ystem32\\gone.dll", {"C:\\Program Filesystem32\\gone.dll"}},
      {"", {}},
      {"   ", {}},
      {"%1", {}},
      {"gone.dll,0", {}},
      {"-5", {}},
      {",0", {}},
      {"C", {}},
      {"\\\\server\\share\\gone.dll", {}},
      {"\"" + gone + "\",0", {}},
      {"C:", {"c:"}},
      // An index after nothing leaves nothing, which is no file.
      {",:gone", {""}},
      // What looks like a quoted path loses its last character, whatever it is.
      {"\":gone\",0", {":gone"}},
      {"\":gone,0", {":gon"}},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.icon);
    EXPECT_EQ(reportedOf(each.icon), each.badValues);
  }
}

TEST_F(DefaultIconsTest, AValueThatIsNoTextIsSkipped) {
  setIcon(prefix, "");
  setBytes(machineClasses + prefix + "\\DefaultIcon", "", REG_BINARY, gone);
  Command10(form);
  EXPECT_EQ(findings(), std::vector<Texts>{});
}

TEST_F(DefaultIconsTest, AnExpandableValueIsReadToo) {
  setIcon(prefix, "%SystemDrive%\\DefaultIconsTest\\gone.dll,1", REG_EXPAND_SZ);
  Command10(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(prefix, "C:\\defaulticonstest\\gone.dll")}));
}

TEST_F(DefaultIconsTest, OnlyTheDefaultValueOfTheIconKeyCounts) {
  setIcon(prefix, "");
  setText(machineClasses + prefix, "", gone);
  setText(machineClasses + prefix + "\\DefaultIcon", "Open", gone);
  setText(machineClasses + prefix + "\\CurVer\\DefaultIcon", "", gone);
  Command10(form);
  EXPECT_EQ(findings(), std::vector<Texts>{});
}

TEST_F(DefaultIconsTest, EachFindingGetsItsOwnRowAndIsListed) {
  form.View2.add("help");
  form.List1.add("stale");
  form.List2.add("stale");
  setIcon(prefix + "1", gone + " ,0");
  setIcon(prefix + "2", gone);
  Command10(form);
  EXPECT_EQ(fixture::findingOf(form, 1), (Texts{"help", "", "", "", "", ""}));
  EXPECT_EQ(fixture::findingOf(form, 2), finding(prefix + "1", gone + " "));
  EXPECT_EQ(fixture::findingOf(form, 3), finding(prefix + "2", gone));
  EXPECT_EQ(form.List2.text(0), gone + " ");
  EXPECT_EQ(form.List2.text(1), gone);
  EXPECT_NE(form.List1.text(0), "stale");
  EXPECT_EQ(form.View2.rowInView(), form.View2.count());
  EXPECT_EQ(cell(), decimal(form.List2.count()));
  EXPECT_EQ(form.Text1.text(), decimal(form.List2.count() + 1));
}

TEST_F(DefaultIconsTest, AClassIsReadWithoutTheBlanksAroundItsName) {
  setIcon(prefix + " ", gone);
  Command10(form);
  EXPECT_EQ(findings(), std::vector<Texts>{});
}

TEST_F(DefaultIconsTest, TheLastClassIsLookedAtToo) {
  setIcon("~DefaultIconsTest", gone);
  Command10(form);
  EXPECT_EQ(fixture::findingOf(form, form.View2.count()), finding("~DefaultIconsTest", gone));
}

TEST_F(DefaultIconsTest, TheCellStaysEmptyUntilSomethingIsFound) {
  setIcon("~DefaultIconsTest", gone);
  form.messages.serveHost = [this] {
    EXPECT_EQ(cell(), form.View2.count() == 0 ? "" : decimal(form.List2.count()));
  };
  Command10(form);
  EXPECT_EQ(cell(), decimal(form.List2.count()));
}

TEST_F(DefaultIconsTest, EachFindingIsKeptInTheRunningTotal) {
  form.totalFound = 40;
  setIcon(prefix + "1", gone);
  setIcon(prefix + "2", gone);
  form.messages.serveHost = [this] {
    const std::string kept = storedText(countKey, "reg-count");
    EXPECT_EQ(kept, form.View2.count() == 0 ? "(none)" : decimal(40 + form.List2.count()));
  };
  Command10(form);
  EXPECT_EQ(form.totalFound, 40 + form.List2.count());
  EXPECT_EQ(storedText(countKey, "reg-count"), form.totalFoundText);
}

TEST_F(DefaultIconsTest, ACancelOfTheListEndsItThereAndTheWalkAfterItsFirstEntry) {
  setIcon(prefix + "1", gone);
  setIcon(prefix + "2", gone);
  setIcon(prefix + "3", gone);
  form.messages.serveHost = [this] {
    if (form.List1.count() == 2) {
      form.Text2.setText("2");
      form.cancelRequested = true;
    }
  };
  Command10(form);
  EXPECT_EQ(fixture::entriesOf(form.List1), (Texts{prefix + "1", prefix + "2"}));
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(prefix + "1", gone)}));
}

TEST_F(DefaultIconsTest, AnEmptyListTakesOneTurnAndShowsZero) {
  form.View2.add("help");
  form.Label3.caption = "before";
  form.Text2.setText("2");
  int turns = 0;
  form.messages.serveHost = [&turns] { ++turns; };
  Command10(form);
  // The enumeration asks once, too.
  EXPECT_EQ(turns, 2);
  EXPECT_EQ(form.Label3.caption.get(), "");
  EXPECT_EQ(cell(), "0");
  EXPECT_EQ(form.Text1.text(), "1");
  EXPECT_EQ(storedText(countKey, "reg-count"), "(none)");
}

TEST_F(DefaultIconsTest, EachClassIsShownWhileItIsListedAndWhileItIsLookedAt) {
  setIcon(prefix + "1", "");
  setIcon(prefix + "2", "");
  form.messages.serveHost = [this] {
    if (form.List1.count() == 2) {
      form.Text2.setText("2");
    }
  };
  const fixture::PaintedTexts painted(form.Label3);
  Command10(form);
  EXPECT_EQ(painted.texts, (Texts{prefix + "1", prefix + "2", prefix + "1"}));
}

TEST_F(DefaultIconsTest, TheStatusLineNamesTheCategory) {
  Command10(form);
  EXPECT_EQ(form.Label4.caption.get(), "Invalid Icon Reference");
}

TEST_F(DefaultIconsTest, WhatTheUserExcludedIsAddedLikeAnyOther) {
  makeFile(form.programFolder + "\\exregscan.txt", "HKEY_CLASSES_ROOT\r\n");
  setIcon(prefix, gone);
  Command10(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(prefix, gone)}));
  DeleteFileW(Wide(form.programFolder + "\\exregscan.txt").get());
}

}  // namespace
}  // namespace zelvreg
