// Servers of the merged classes root.
#include "scanners/KeptScanners.h"

#include <algorithm>

#include "form/Form42.h"
#include "scanners/KeptScannersFixture.h"
#include "scanners/PaintedTexts.h"
#include "text/Wide.h"

namespace zelvreg::serverPrograms {
namespace {

const std::string goneResolved = "c:\\serverprogramstest\\gone.exe";

class ServerProgramsTest : public ServerProgramsFixture {
 protected:
  // A class is listed from the 64-bit view and its server read in the other.
  static void serve(const std::string& name, const std::string& server) {
    makeKey(classKeys + name);
    setText(classKeys32 + name + "\\InprocServer32", "", server);
  }

  static Texts finding(const std::string& name, const std::string& program) {
    const std::string key = "clsid\\" + name + "\\InprocServer32";
    return {key, program, "8", "HKEY_CLASSES_ROOT", key, "g"};
  }
};

TEST_F(ServerProgramsTest, AProgramThatIsGoneIsReported) {
  serve(classA, gone);
  serve(classB, there);
  Command14(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(classA, goneResolved)}));
  EXPECT_FALSE(form.View2.isChecked(1));
}

TEST_F(ServerProgramsTest, AServerWithoutTextIsReportedWithAnEmptyBadValue) {
  serve(classA, "");
  serve(classB, "\"\"");
  Command14(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(classA, ""), finding(classB, "")}));
}

TEST_F(ServerProgramsTest, AClassWithoutAServerOrItsDefaultValueIsNot) {
  makeKey(classKeys + classA);
  makeKey(classKeys + classB);
  setText(classKeys32 + classB + "\\InprocServer32", "ThreadingModel", "Both");
  Command14(form);
  EXPECT_TRUE(findings().empty());
}

TEST_F(ServerProgramsTest, AServerIsCutAfterItsFirstExtensionAndMustBeAProgramOnADrive) {
  struct Case {
    std::string server;
    std::string reported;  // empty if it is not
  };
  makeFile(folder + "\\" + userName() + ".exe");
  const std::vector<Case> cases{
      {gone + " /automation", goneResolved},
      {gone + ".bak", goneResolved},
      {"\"" + gone + "\" /automation", goneResolved},
      {"C:\\\"ServerProgramsTest\\Gone.exe", goneResolved},
      {"C:\\SERVERPROGRAMSTEST\\GONE.EXE", goneResolved},
      {folder + "\\%NoSuchVariable%.exe", "c:\\serverprogramstest\\%nosuchvariable%.exe"},
      {folder + "\\*.exe", "c:\\serverprogramstest\\*.exe"},
      {there + " /automation", ""},
      {"\"" + there + "\" /automation", ""},
      {folder + "\\%USERNAME%.exe", ""},
      {"%SystemRoot%\\system32\\y.dll", ""},
      {"%:\\Gone.exe", ""},
      {"Gone.exe", ""},
      {"\\ServerProgramsTest\\Gone.exe", ""},
      {"rundll32.exe " + gone, ""},
      {folder + "\\Gone.dll", ""},
      {folder + "\\Gone.com", ""},
      {folder + "\\exe\\Gone.exe", ""},
      {folder + "\\dll\\Gone.exe", ""},
      {folder + "\\ovl\\Gone.exe", ""},
      {folder + "\\ocx\\Gone.exe", ""},
  };
  for (const Case& tested : cases) {
    SCOPED_TRACE(tested.server);
    form.View2.clear();
    serve(classA, tested.server);
    Command14(form);
    std::vector<Texts> expected;
    if (!tested.reported.empty()) {
      expected.push_back(finding(classA, tested.reported));
    }
    EXPECT_EQ(findings(), expected);
  }
}

TEST_F(ServerProgramsTest, TheNumberOfEachClassIsPaintedAtOnce) {
  serve(classA, there);
  const fixture::PaintedTexts painted(form.Label3);
  for (void (*scan)(Form42 & form) : {Command14, Command18, Command19}) {
    scan(form);
    const std::string count = std::to_string(form.List1.count());
    EXPECT_EQ(painted.texts.back(), "Checking    " + count + " / " + count);
  }
}

TEST_F(ServerProgramsTest, TheListFollowsEachFinding) {
  serve(classA, gone);
  serve(classB, gone);
  Command14(form);
  EXPECT_GE(form.View2.count(), 2U);
  EXPECT_EQ(form.View2.rowInView(), form.View2.count());
}

TEST_F(ServerProgramsTest, ABlankBeforeTheDriveDoesNotHideAProgram) {
  serve(classA, " " + gone);
  serve(classB, "  ");
  Command14(form);
  EXPECT_EQ(findings().size(), 2U);
}

TEST_F(ServerProgramsTest, TheServerIsReadInThe32BitViewAlone) {
  setText(classKeys + classA + "\\InprocServer32", "", gone);
  Command14(form);
  EXPECT_TRUE(findings().empty());
}

TEST_F(ServerProgramsTest, AClassOfThe32BitViewAloneIsNotListed) {
  setText(classKeys32 + classA + "\\InprocServer32", "", gone);
  Command14(form);
  EXPECT_TRUE(findings().empty());
}

TEST_F(ServerProgramsTest, AClassIsLookedUpWithoutBlanksAtTheEndOfItsName) {
  serve(classA + " ", gone);
  Command14(form);
  EXPECT_TRUE(findings().empty());
}

TEST_F(ServerProgramsTest, AProgramKeepsItsAttributes) {
  SetFileAttributesW(Wide(there).get(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
  const DWORD before = GetFileAttributesW(Wide(there).get());
  serve(classA, there);
  Command14(form);
  EXPECT_TRUE(findings().empty());
  EXPECT_EQ(GetFileAttributesW(Wide(there).get()), before);
}

TEST_F(ServerProgramsTest, TheCountStartsAgainAndIsNeitherShownNorKept) {
  serve(classA, gone);
  serve(classB, "");
  form.categoryFound = 40;
  const Texts before = cells();
  Command14(form);
  EXPECT_EQ(form.categoryFound, static_cast<std::int64_t>(form.View2.count()));
  EXPECT_EQ(findings().size(), 2U);
  EXPECT_EQ(cells(), before);
  EXPECT_EQ(storedText(countKey, "reg-count"), "(none)");
}

TEST_F(ServerProgramsTest, TheBadValuesAreListedAndTheRowsCounted) {
  serve(classA, gone);
  serve(classB, "");
  form.List1.add("left over");
  form.List2.add("left over");
  form.View2.add("before");
  form.Text1.setText("1");
  Command14(form);
  EXPECT_EQ(static_cast<std::size_t>(form.List2.count()) + 1, form.View2.count());
  EXPECT_EQ(std::ranges::count(fixture::entriesOf(form.List2), goneResolved), 1);
  EXPECT_EQ(std::ranges::count(fixture::entriesOf(form.List1), "left over"), 0);
  EXPECT_EQ(std::ranges::count(fixture::entriesOf(form.List1), classA), 1);
  EXPECT_EQ(fixture::findingOf(form, 1), (Texts{"before", "", "", "", "", ""}));
  EXPECT_EQ(form.Text1.text(), rowCount());
}

TEST_F(ServerProgramsTest, TheStatusLineSaysHowFarTheWalkIs) {
  serve(classA, gone);
  for (auto* scan : {Command14, Command18, Command19}) {
    const Texts shown = progressOf(scan);
    const std::string count = decimal(form.List1.count());
    EXPECT_EQ(shown.back(), "Checking    " + count + " / " + count);
    EXPECT_EQ(std::ranges::count(shown, "Checking    1 / " + count), 1);
  }
}

TEST_F(ServerProgramsTest, AStopBetweenTwoClassesEndsTheWalk) {
  for (auto* scan : {Command14, Command18, Command19}) {
    form.Text2.setText("");
    form.Label3.caption = "";
    for (const std::string& name : {classA, classA + " ", classB}) {
      serve(name, gone);
    }
    form.messages.serveHost = [&] {
      if (form.Label3.caption.get().starts_with("Checking")) {
        form.Text2.setText("2");
        form.cancelRequested = true;
      }
    };
    scan(form);
    EXPECT_GT(form.List1.count(), 2);
    EXPECT_EQ(form.Label3.caption.get(), "Checking    2 / " + decimal(form.List1.count()));
    EXPECT_EQ(form.Text2.text(), "2");
  }
}

TEST_F(ServerProgramsTest, AStopBeforeItLeavesNothingToTest) {
  serve(classA, gone);
  form.Text2.setText("2");
  Command14(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.Label3.caption.get(), "Checking    1 / 0");
}

}  // namespace
}  // namespace zelvreg::serverPrograms
