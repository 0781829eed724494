// The user's compatibility lists, whose value names are the paths of programs.
#include "scanners/ApplicationPathsFixture.h"

namespace zelvreg {
namespace {

using fixture::Rows;

class ApplicationPathsCompatibilityTest : public fixture::ApplicationPathsFixture,
                                          public ::testing::WithParamInterface<bool> {
 protected:
  [[nodiscard]] fixture::Texts finding(const std::string& name) const {
    return named(name, user, reported);
  }

  const std::string list = GetParam() ? layers : store;
  const std::string reported = GetParam() ? layersReported : storeReported;
};

std::string listName(const ::testing::TestParamInfo<bool>& list) {
  return list.param ? "Layers" : "Store";
}
INSTANTIATE_TEST_SUITE_P(Lists, ApplicationPathsCompatibilityTest, ::testing::Bool(), listName);

TEST_P(ApplicationPathsCompatibilityTest, AProgramThatIsGoneIsReportedByItsNameAsItIs) {
  setText(list, gone, there);
  Command5(form);
  EXPECT_EQ(findings(), Rows{finding(gone)});
}

TEST_P(ApplicationPathsCompatibilityTest, AProgramThatIsThereIsNot) {
  setText(list, there, gone);
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(ApplicationPathsCompatibilityTest, AFolderIsNoProgram) {
  setText(list, folder, "");
  Command5(form);
  EXPECT_EQ(findings(), Rows{finding(folder)});
}

TEST_P(ApplicationPathsCompatibilityTest, QuotesAreNotTestedButReported) {
  setText(list, "\"" + gone + "\"", "");
  setText(list, "\"" + there + "\"", "");
  Command5(form);
  EXPECT_EQ(findings(), Rows{finding("\"" + gone + "\"")});
}

TEST_P(ApplicationPathsCompatibilityTest, ANameIsResolvedAgainWithoutItsQuotes) {
  const std::string name = "C:\\Windows\\Sys\"tem32\\application paths test.exe";
  setText(list, name, "");
  Command5(form);
  EXPECT_EQ(findings(), Rows{finding(name)});
}

TEST_P(ApplicationPathsCompatibilityTest, AVariableIsReplacedWhileTheQuotesAreStillThere) {
  // Without the quote the name would be one of the folder for 32-bit programs.
  makeFile("C:\\Program Files\\Program Files (x86)\\application paths test.exe");
  setText(list, "%ProgramFiles%\\Pro\"gram Files (x86)\\application paths test.exe", "");
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(ApplicationPathsCompatibilityTest, VariablesAreReplaced) {
  setText(list, "%SystemDrive%\\ApplicationPathsTest\\There.exe", "");
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(ApplicationPathsCompatibilityTest, ArgumentsArePartOfThePath) {
  setText(list, there + " /silent", "");
  Command5(form);
  EXPECT_EQ(findings(), Rows{finding(there + " /silent")});
}

TEST_P(ApplicationPathsCompatibilityTest, BlanksAroundANameAreReportedButNotTested) {
  setText(list, "  " + gone + "  ", "");
  setText(list, "  " + there + "  ", "");
  Command5(form);
  EXPECT_EQ(findings(), Rows{finding("  " + gone + "  ")});
}

TEST_P(ApplicationPathsCompatibilityTest, ANameOfBlanksAndTheDefaultValueAreSkipped) {
  setText(list, "", gone);
  setText(list, "  ", gone);
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(ApplicationPathsCompatibilityTest, EachNameIsTested) {
  setText(list, "C:\\a gone.exe", "");
  setText(list, there, "");
  setText(list, "C:\\z gone.exe", "");
  Command5(form);
  EXPECT_EQ(findings(), (Rows{finding("C:\\a gone.exe"), finding("C:\\z gone.exe")}));
}

TEST_P(ApplicationPathsCompatibilityTest, AMissingListFindsNothing) {
  removeKey(list);
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(ApplicationPathsCompatibilityTest, TheListIsOpenedToTheUserEvenIfItIsEmpty) {
  Command5(form);
  EXPECT_TRUE(isGranted(list));
  EXPECT_FALSE(isGranted(list.substr(0, list.rfind('\\'))));
}

class ApplicationPathsListsInTurnTest : public fixture::ApplicationPathsFixture {};

TEST_F(ApplicationPathsListsInTurnTest, TheValuesOfAProgramAreNotTakenForNamesOfTheFirstList) {
  setText(appPaths32 + "\\Tool.exe", "Path", "");
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_F(ApplicationPathsListsInTurnTest, TheNamesOfTheFirstListAreNotTakenForThoseOfTheSecond) {
  setText(store, "C:\\a gone.exe", "");
  setText(layers, "C:\\z gone.exe", "");
  Command5(form);
  EXPECT_EQ(findings(), (Rows{named("C:\\a gone.exe", user, storeReported),
                              named("C:\\z gone.exe", user, layersReported)}));
}

}  // namespace
}  // namespace zelvreg
