// The lists of application paths of the machine.
#include "scanners/ApplicationPaths.h"

#include "form/Form42.h"
#include "scanners/ApplicationPathsFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using fixture::Rows;

class ApplicationPathsTest : public fixture::ApplicationPathsFixture {};

// What the list of the 64-bit view and that of the 32-bit view have in common.
class ApplicationPathsListTest : public ApplicationPathsTest,
                                 public ::testing::WithParamInterface<bool> {
 protected:
  const std::string list = GetParam() ? appPaths32 : appPaths;
  const std::string ntList = GetParam() ? ntAppPaths32 : ntAppPaths;
  const std::string reported = GetParam() ? appPaths32Reported : appPathsReported;
};

std::string viewName(const ::testing::TestParamInfo<bool>& list) {
  return list.param ? "Of32Bit" : "Of64Bit";
}
INSTANTIATE_TEST_SUITE_P(Lists, ApplicationPathsListTest, ::testing::Bool(), viewName);

TEST_P(ApplicationPathsListTest, AProgramThatIsGoneIsReportedByItsResolvedPath) {
  setText(list + "\\Tool.exe", "", gone);
  Command5(form);
  EXPECT_EQ(findings(), Rows{inAppPaths(goneResolved, "Tool.exe", reported)});
}

TEST_P(ApplicationPathsListTest, AProgramThatIsThereIsNot) {
  setText(list + "\\Tool.exe", "", there);
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(ApplicationPathsListTest, AProgramWithANamedValueIsSkipped) {
  setText(list + "\\Tool.exe", "", gone);
  setText(list + "\\Tool.exe", "Path", "C:\\");
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(ApplicationPathsListTest, TheProgramAfterItIsTestedLikeAnyOther) {
  setText(list + "\\A.exe", "Path", "C:\\");
  setText(list + "\\B.exe", "", gone);
  Command5(form);
  EXPECT_EQ(findings(), Rows{inAppPaths(goneResolved, "B.exe", reported)});
}

TEST_P(ApplicationPathsListTest, AProgramWithoutAnyValueIsReportedWithAnEmptyPath) {
  makeKey(list + "\\Tool.exe");
  Command5(form);
  EXPECT_EQ(findings(), Rows{inAppPaths("", "Tool.exe", reported)});
}

TEST_P(ApplicationPathsListTest, AFolderIsNoProgram) {
  setText(list + "\\Tool.exe", "", folder);
  Command5(form);
  EXPECT_EQ(findings(), Rows{inAppPaths("c:\\applicationpathstest\\folder", "Tool.exe", reported)});
}

TEST_P(ApplicationPathsListTest, QuotesAreNeitherTestedNorReported) {
  setText(list + "\\Gone.exe", "", "\"" + gone + "\"");
  setText(list + "\\There.exe", "", "\"" + there + "\"");
  Command5(form);
  EXPECT_EQ(findings(), Rows{inAppPaths(goneResolved, "Gone.exe", reported)});
}

TEST_P(ApplicationPathsListTest, APathIsResolvedAgainWithoutItsQuotesForTheTestAlone) {
  setText(list + "\\Tool.exe", "", "C:\\Windows\\Sys\"tem32\\application paths test.exe");
  Command5(form);
  EXPECT_EQ(findings(), Rows{inAppPaths("c:\\windows\\system32\\application paths test.exe",
                                        "Tool.exe", reported)});
}

TEST_P(ApplicationPathsListTest, ArgumentsArePartOfThePath) {
  setText(list + "\\Tool.exe", "", there + " /silent");
  Command5(form);
  EXPECT_EQ(findings(),
            Rows{inAppPaths("c:\\applicationpathstest\\there.exe /silent", "Tool.exe", reported)});
}

TEST_P(ApplicationPathsListTest, VariablesAreReplaced) {
  setText(list + "\\Gone.exe", "", "%SystemDrive%\\ApplicationPathsTest\\Gone.exe", REG_EXPAND_SZ);
  setText(list + "\\There.exe", "", "%SystemDrive%\\ApplicationPathsTest\\There.exe",
          REG_EXPAND_SZ);
  Command5(form);
  EXPECT_EQ(findings(),
            Rows{inAppPaths("C:\\applicationpathstest\\gone.exe", "Gone.exe", reported)});
}

TEST_P(ApplicationPathsListTest, AMissingFileOfTheSystemFolderIsReported) {
  setText(list + "\\Tool.exe", "", "C:\\Windows\\System32\\application paths test.exe");
  Command5(form);
  EXPECT_EQ(findings(), Rows{inAppPaths("c:\\windows\\Sysnative\\application paths test.exe",
                                        "Tool.exe", reported)});
}

TEST_P(ApplicationPathsListTest, BlanksInFrontOfANameAreLostAndNothingIsReadUnderTheRest) {
  setText(list + "\\ Tool.exe", "", there);
  Command5(form);
  EXPECT_EQ(findings(), Rows{inAppPaths("", "Tool.exe", reported)});
}

TEST_P(ApplicationPathsListTest, EachProgramIsTested) {
  setText(list + "\\A.exe", "", gone);
  setText(list + "\\B.exe", "", there);
  setText(list + "\\C.exe", "", gone);
  Command5(form);
  EXPECT_EQ(findings(), (Rows{inAppPaths(goneResolved, "A.exe", reported),
                              inAppPaths(goneResolved, "C.exe", reported)}));
}

TEST_P(ApplicationPathsListTest, EachProgramIsOpenedToTheUserUnderBothSpellings) {
  setText(list + "\\Tool.exe", "", there);
  makeKey(ntList + "\\Tool.exe");
  makeKey(ntList + "\\Other.exe");
  Command5(form);
  EXPECT_TRUE(isGranted(list + "\\Tool.exe"));
  EXPECT_TRUE(isGranted(ntList + "\\Tool.exe"));
  EXPECT_FALSE(isGranted(ntList + "\\Other.exe"));
}

TEST_P(ApplicationPathsListTest, AfterTheLastProgramTheListsThemselvesAreOpened) {
  setText(list + "\\Tool.exe", "", there);
  makeKey(ntList);
  Command5(form);
  EXPECT_TRUE(isGranted(list));
  EXPECT_TRUE(isGranted(ntList));
}

TEST_P(ApplicationPathsListTest, WithoutProgramsTheListsThemselvesAreOpened) {
  makeKey(ntList);
  Command5(form);
  EXPECT_TRUE(isGranted(list));
  EXPECT_TRUE(isGranted(ntList));
  EXPECT_EQ(findings(), Rows{});
}

TEST_F(ApplicationPathsTest, BlanksAroundAPathAreTrimmedInTheFirstListAlone) {
  setText(appPaths + "\\Tool.exe", "", "  " + gone + "  ");
  setText(appPaths32 + "\\Tool.exe", "", "  " + gone + "  ");
  Command5(form);
  EXPECT_EQ(findings(),
            (Rows{inAppPaths(goneResolved, "Tool.exe", appPathsReported),
                  inAppPaths("  " + goneResolved + "  ", "Tool.exe", appPaths32Reported)}));
}

TEST_F(ApplicationPathsTest, AMissingListIsWalkedUnderTheOtherSpellingButReadUnderItsOwn) {
  removeKey(appPaths);
  setText(ntAppPaths + "\\Tool.exe", "", there);
  setText(ntAppPaths + "\\WithValue.exe", "Path", "C:\\");
  Command5(form);
  EXPECT_EQ(findings(), Rows{inAppPaths("", "Tool.exe", ntAppPathsReported)});
  EXPECT_EQ(form.ntSpelling, 2);
}

TEST_F(ApplicationPathsTest, AnEmptyListIsNotWalkedUnderTheOtherSpelling) {
  makeKey(ntAppPaths + "\\Tool.exe");
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
  EXPECT_EQ(form.ntSpelling, 0);
}

TEST_F(ApplicationPathsTest, AMissing32BitListIsNotWalkedUnderTheOtherSpelling) {
  removeKey(appPaths32);
  makeKey(ntAppPaths32 + "\\Tool.exe");
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
  EXPECT_EQ(form.ntSpelling, 0);
}

TEST_F(ApplicationPathsTest, TheOtherSpellingOnceFoundIsKept) {
  form.ntSpelling = 2;
  Command5(form);
  EXPECT_EQ(form.ntSpelling, 2);
}

TEST_F(ApplicationPathsTest, UnderTheOtherSpellingThe32BitListIsReadThereEvenIfNothingIs) {
  form.ntSpelling = 2;
  setText(appPaths32 + "\\A.exe", "", gone);
  setText(ntAppPaths32 + "\\A.exe", "", there);
  setText(appPaths32 + "\\B.exe", "", there);
  setText(ntAppPaths32 + "\\C.exe", "", gone);
  setText(appPaths32 + "\\C.exe", "", there);
  setText(appPaths32 + "\\D.exe", "Path", "C:\\");
  Command5(form);
  EXPECT_EQ(findings(), (Rows{inAppPaths("", "B.exe", appPaths32Reported),
                              inAppPaths(goneResolved, "C.exe", appPaths32Reported)}));
}

TEST_F(ApplicationPathsTest, UnderTheOtherSpellingThe64BitListIsReadUnderItsOwn) {
  form.ntSpelling = 2;
  setText(appPaths + "\\Tool.exe", "", there);
  setText(ntAppPaths + "\\Tool.exe", "", gone);
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_F(ApplicationPathsTest, ANewRowIsUntickedAndScrolledIntoView) {
  setText(appPaths + "\\Tool.exe", "", gone);
  form.View2.add("font");
  form.Text1.setText("5");
  Command5(form);
  EXPECT_EQ(fixture::findingOf(form, 2), inAppPaths(goneResolved, "Tool.exe", appPathsReported));
  EXPECT_FALSE(form.View2.isChecked(2));
  // After it come findings in places that other tests fill.
  EXPECT_EQ(form.View2.rowInView(), form.View2.count());
}

TEST_F(ApplicationPathsTest, WhatTheUserExcludedIsReportedLikeAnyOther) {
  makeFile(form.programFolder + "\\exregscan.txt", "HKEY_LOCAL_MACHINE\r\n");
  setText(appPaths + "\\Tool.exe", "", gone);
  Command5(form);
  EXPECT_EQ(findings().size(), 1U);
  DeleteFileW(Wide(form.programFolder + "\\exregscan.txt").get());
}

}  // namespace
}  // namespace zelvreg
