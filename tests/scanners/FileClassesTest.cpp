#include <algorithm>

#include "form/Form42.h"
#include "scanners/FileClassesFixture.h"
#include "scanners/PaintedTexts.h"
#include "text/Wide.h"

using namespace std::string_view_literals;

namespace zelvreg::fileClasses {
namespace {

class FileClassesTest : public FileClassesFixture {
 protected:
  // Asks for the end of the enumeration as soon as it has listed so many names.
  void listOnly(int count) {
    form.messages.serveHost = [this, count] {
      if (form.List1.count() == count) {
        form.Text2.setText("2");
      }
    };
  }
};

TEST_F(FileClassesTest, OnlyAMissingProgramOnADriveIsReportedAsTheCommandHasIt) {
  struct Case {
    std::string command;
    Texts programs;
  };
  const std::string folder = "C:\\FileClassesTest\\";
  const std::vector<Case> cases{
      {gone, {gone}},
      {there, {}},
      {"c:\\fileclassestest\\GONE.EXE", {"c:\\fileclassestest\\GONE.EXE"}},
      {"\"" + gone + "\" \"%1\" /x", {gone}},
      {"\"" + there + "\" \"" + gone + "\"", {}},
      {gone + " %1", {gone}},
      {gone + "%1", {gone}},
      {there + " " + gone, {}},
      {" " + gone, {" " + gone}},
      {folder + "%UserName%.exe", {}},
      {folder + "%UserName%gone.exe", {folder + "%UserName%gone.exe"}},
      {"C:\\Windows\\System32\\gone too.exe", {"C:\\Windows\\System32\\gone too.exe"}},
      // The first of four extensions ends the program, wherever it is.
      {"C:\\exefiles\\gone.exe", {}},
      {"C:\\Windows\\System32\\rundll32.exe " + gone, {}},
      {folder + "gone.dll.exe", {}},
      {folder + "gone.OVL.exe", {}},
      {folder + "gone.ocx.exe", {}},
      {folder + "gone.com.exe", {folder + "gone.com.exe"}},
      {folder + "gone.com", {}},
      {folder + "goneexe", {}},
      // Between quotes it does not.
      {"\"" + folder + "gone.dll gone.exe\"", {folder + "gone.dll gone.exe"}},
      {"\"" + folder + "gone.exe.txt\"", {}},
      {"\"\" " + gone, {}},
      {"\"" + gone, {}},
      {" \"" + gone + "\"", {}},
      // No path on a drive.
      {"gone.exe", {}},
      {"\"gone.exe\" %1", {}},
      {"%ProgramFiles%\\gone.exe", {}},
      {"\\\\server\\share\\gone.exe", {}},
      {"e", {}},
  };
  makeFile(folder + userName() + ".exe");
  for (const Case& each : cases) {
    SCOPED_TRACE(each.command);
    setCommand(className + openKey, each.command);
    form.View2.clear();
    Command12(form);
    std::vector<Texts> expected;
    for (const std::string& program : each.programs) {
      expected.push_back(programFinding(className, program));
    }
    EXPECT_EQ(findings(), expected);
  }
}

// What a command's key contains: nothing if there is none.
struct CommandKey {
  bool isThere = false;
  std::string command;
  bool hasNamedValue = false;
};

TEST_F(FileClassesTest, TheEditCommandReplacesAnOpenCommandThatIsBlank) {
  struct Case {
    CommandKey open;
    CommandKey edit;
    std::vector<Texts> findings;
  };
  const CommandKey none;
  const CommandKey empty{.isThere = true, .command = ""};
  const CommandKey blank{.isThere = true, .command = "  "};
  const CommandKey named{.isThere = true, .command = "", .hasNamedValue = true};
  const CommandKey dead{.isThere = true, .command = gone};
  const CommandKey alive{.isThere = true, .command = there};
  const Texts openProgram = programFinding(className, gone);
  const Texts editProgram = programFinding(className, gone, editKey);
  const Texts openEmpty = emptyFinding(className, openKey);
  const Texts editEmpty = emptyFinding(className, editKey);
  const std::vector<Case> cases{
      {none, none, {}},
      {dead, none, {openProgram}},
      {none, dead, {editProgram}},
      {alive, dead, {}},
      {dead, alive, {openProgram}},
      {empty, dead, {editProgram}},
      {blank, alive, {}},
      {named, dead, {editProgram}},
      {empty, none, {openEmpty}},
      {blank, none, {openEmpty}},
      {named, none, {}},
      {none, empty, {editEmpty}},
      {empty, empty, {editEmpty}},
      {named, blank, {editEmpty}},
      {empty, named, {}},
  };
  const auto make = [](const std::string& path, const CommandKey& key) {
    if (key.isThere) {
      makeKey(classesRoot + path);
    }
    if (!key.command.empty()) {
      setCommand(path, key.command);
    }
    if (key.hasNamedValue) {
      setCommand(path, "x", "DelegateExecute");
    }
  };
  for (std::size_t index = 0; index < cases.size(); ++index) {
    SCOPED_TRACE(index);
    emptyKey(classesRoot + className);
    make(className + openKey, cases[index].open);
    make(className + editKey, cases[index].edit);
    form.View2.clear();
    form.List7.add("stale");
    Command12(form);
    EXPECT_EQ(findings(), cases[index].findings);
  }
}

TEST_F(FileClassesTest, ANumberInThePlaceOfACommandIsNotBlank) {
  makeKey(classesRoot + className + openKey);
  setNumber(classesRoot + className + openKey, "", 5);
  Command12(form);
  EXPECT_EQ(findings(), std::vector<Texts>{});
}

TEST_F(FileClassesTest, AnExpandableCommandIsReadToo) {
  setText(classesRoot + className + openKey, "", gone + " %1", REG_EXPAND_SZ);
  Command12(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{programFinding(className, gone)}));
}

TEST_F(FileClassesTest, ACommandEndsAtItsNul) {
  setText(classesRoot + className + openKey, "", "C:\\FileClassesTest\\gone.com\0.exe"sv);
  Command12(form);
  EXPECT_EQ(findings(), std::vector<Texts>{});
}

TEST_F(FileClassesTest, AClassIsReadWithoutTheBlanksAroundItsName) {
  setCommand(className + "1 " + openKey, gone);
  Command12(form);
  removeKey(classesRoot + className + "1 ");
  EXPECT_EQ(findings(), std::vector<Texts>{});
}

TEST_F(FileClassesTest, OtherVerbsAndKeysWithoutACommandAreNotLookedAt) {
  setCommand(className + "\\shell\\print\\command", gone);
  setCommand(className + "\\shell\\open", gone);
  setCommand(className + "\\shell\\edit", gone);
  setCommand(className, gone);
  Command12(form);
  EXPECT_EQ(findings(), std::vector<Texts>{});
}

TEST_F(FileClassesTest, EachFindingGetsItsOwnRowAndIsListed) {
  form.View2.add("icons");
  form.List1.add("stale");
  form.List2.add("stale");
  setCommand(className + "1" + editKey, " ");
  setCommand(className + "2" + openKey, gone);
  setExtension("a/fileclassestest", ".fileclassestest");
  Command12(form);
  EXPECT_EQ(fixture::findingOf(form, 1), (Texts{"icons", "", "", "", "", ""}));
  EXPECT_EQ(fixture::findingOf(form, 2), emptyFinding(className + "1", editKey));
  EXPECT_EQ(fixture::findingOf(form, 3), programFinding(className + "2", gone));
  EXPECT_EQ(fixture::findingOf(form, form.View2.count()),
            mediaFinding("a/fileclassestest", ".fileclassestest"));
  EXPECT_FALSE(form.View2.isChecked(2));
  EXPECT_EQ(form.View2.rowInView(), form.View2.count());
  EXPECT_EQ(fixture::entriesOf(form.List1), (Texts{"a/fileclassestest"}));
  EXPECT_EQ(form.List2.text(0), " ");
  EXPECT_EQ(form.List2.text(1), gone);
  EXPECT_EQ(form.List2.text(form.List2.count() - 1), ".fileclassestest");
  EXPECT_EQ(cell(), decimal(form.List2.count()));
  EXPECT_EQ(form.Text1.text(), decimal(form.List2.count() + 1));
}

TEST_F(FileClassesTest, TheLastClassIsLookedAtToo) {
  setCommand("~FileClassesTest" + openKey, gone);
  Command12(form);
  removeKey(classesRoot + "~FileClassesTest");
  EXPECT_EQ(fixture::findingOf(form, form.View2.count()), programFinding("~FileClassesTest", gone));
}

TEST_F(FileClassesTest, TheCellIsWrittenInEachTurnEvenIfNothingIsFound) {
  makeKey(classesRoot + className + "1");
  setCommand(className + "2" + openKey, gone);
  makeKey(classesRoot + className + "3");
  listOnly(3);
  Texts cells;
  form.messages.serveHost = [&, list = form.messages.serveHost] {
    list();
    cells.push_back(cell());
  };
  Command12(form);
  // Four times for the enumeration, three turns, the enumeration of media types, their one turn.
  EXPECT_EQ(cells, (Texts{"", "", "", "", "", "0", "1", "1", "1"}));
}

TEST_F(FileClassesTest, AnEmptyListTakesOneTurnAndShowsZero) {
  form.View2.add("icons");
  form.Label3.caption = "before";
  form.Text2.setText("2");
  Command12(form);
  EXPECT_EQ(form.Label3.caption.get(), "");
  EXPECT_EQ(cell(), "0");
  EXPECT_EQ(form.Text1.text(), "1");
}

TEST_F(FileClassesTest, AClassIsShownAgainWhenItIsLookedAtAndAMediaTypeIsNot) {
  makeKey(classesRoot + className);
  setExtension("a/fileclassestest", "");
  const fixture::PaintedTexts painted(form.Label3);
  Command12(form);
  EXPECT_EQ(std::count(painted.texts.begin(), painted.texts.end(), className), 2);
  EXPECT_EQ(std::count(painted.texts.begin(), painted.texts.end(), "a/fileclassestest"), 1);
}

TEST_F(FileClassesTest, TheStatusLineNamesTheCategory) {
  Command12(form);
  EXPECT_EQ(form.Label4.caption.get(), "Invalid Files extintion");
}

TEST_F(FileClassesTest, WhatTheUserExcludedIsAddedLikeAnyOther) {
  makeFile(form.programFolder + "\\exregscan.txt", "HKEY_CLASSES_ROOT\r\n");
  setCommand(className + openKey, gone);
  Command12(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{programFinding(className, gone)}));
  DeleteFileW(Wide(form.programFolder + "\\exregscan.txt").get());
}

}  // namespace
}  // namespace zelvreg::fileClasses
