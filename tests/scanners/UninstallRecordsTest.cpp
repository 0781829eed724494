// What is reported of one record, in each of the three lists.
#include "scanners/UninstallRecords.h"

#include "form/Form42.h"
#include "scanners/UninstallRecordsFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using fixture::Rows;
using fixture::Texts;

enum class Place { Machine, User, Machine32Bit };

class UninstallRecordsTest : public fixture::UninstallRecordsFixture,
                             public ::testing::WithParamInterface<Place> {
 protected:
  void scan() {
    if (isOf32Bit) {
      uninstall32(form);
    } else {
      uninstall(form);
    }
  }

  [[nodiscard]] Texts shell(const std::string& name) const {
    return finding(name, "133", root, subKey + name);
  }
  [[nodiscard]] Texts deadValue(const std::string& name) const {
    return finding(name, "135", root, subKey + "Record");
  }

  const bool isOfUser = GetParam() == Place::User;
  const bool isOf32Bit = GetParam() == Place::Machine32Bit;
  const std::string list = isOfUser ? ofUser : isOf32Bit ? ofMachine32 : ofMachine;
  const std::string record = list + "\\Record";
  const std::string root = isOfUser ? user : machine;
  const std::string subKey = isOf32Bit ? reported32 : reported;
};

std::string placeName(const ::testing::TestParamInfo<Place>& place) {
  switch (place.param) {
    case Place::Machine:
      return "Machine";
    case Place::User:
      return "User";
    default:
      return "Machine32Bit";
  }
}
INSTANTIATE_TEST_SUITE_P(Lists, UninstallRecordsTest,
                         ::testing::Values(Place::Machine, Place::User, Place::Machine32Bit),
                         placeName);

TEST_P(UninstallRecordsTest, ARecordWithoutAnyValueIsReportedByItsName) {
  makeKey(record);
  scan();
  EXPECT_EQ(findings(), Rows{shell("Record")});
}

TEST_P(UninstallRecordsTest, ADefaultValueOfBlanksCountsAsMissing) {
  setText(record, "", "   ");
  scan();
  EXPECT_EQ(findings(), Rows{shell("Record")});
}

TEST_P(UninstallRecordsTest, ADefaultValueAloneIsEnoughAndNotTestedForAPath) {
  setText(record, "", gone);
  scan();
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(UninstallRecordsTest, AValueNamingAProgramThatIsGoneIsReportedByItsName) {
  setText(record, "UninstallString", "\"" + gone + "\" /remove");
  scan();
  EXPECT_EQ(findings(), Rows{deadValue("UninstallString")});
}

TEST_P(UninstallRecordsTest, WhatIsThereIsNotReported) {
  setText(record, "Arguments", there + " /remove");
  setText(record, "After a launcher", "rundll32.exe " + there + ",Entry");
  setText(record, "Folder", folder);
  setText(record, "Folder with backslash", folder + "\\");
  setText(record, "Icon", there + ",0");
  setText(record, "Quoted", "\"" + there + "\" /remove");
  scan();
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(UninstallRecordsTest, DataWithoutColonAndBackslashIsSkipped) {
  setText(record, "Name", "gone.exe");
  setText(record, "Slashes", "C:/UninstallRecordsTest/Gone.exe");
  setText(record, "Variable", "%SystemDrive%\\UninstallRecordsTest\\Gone.exe", REG_EXPAND_SZ);
  setNumber(record, "Version", 3);
  scan();
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(UninstallRecordsTest, DataThatHoldsThemIsTestedWhateverTheValueIsCalled) {
  setText(record, "Comments", "see also:\\ the manual");
  scan();
  EXPECT_EQ(findings(), Rows{deadValue("Comments")});
}

TEST_P(UninstallRecordsTest, EachDeadValueOfARecordIsReported) {
  setText(record, "", gone);
  setText(record, " a ", gone);
  setText(record, "b", there);
  setText(record, "c", gone);
  scan();
  EXPECT_EQ(findings(), (Rows{deadValue(" a "), deadValue("c")}));
}

TEST_P(UninstallRecordsTest, ARecordWithANamedValueNeedsNoDefaultValue) {
  setText(record, "DisplayName", "Tool");
  scan();
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(UninstallRecordsTest, AMissingFileOfTheSystemFolderIsReported) {
  setText(record, "UninstallString", "C:\\Windows\\System32\\uninstall records test.exe");
  scan();
  EXPECT_EQ(findings(), Rows{deadValue("UninstallString")});
}

TEST_P(UninstallRecordsTest, BlanksInFrontOfANameAreLostAndNothingIsReadUnderTheRest) {
  setText(list + "\\ Record", "", "text");
  scan();
  EXPECT_EQ(findings(), Rows{shell("Record")});
}

TEST_P(UninstallRecordsTest, ValuesOfOneRecordAreNotTakenForThoseOfTheNext) {
  setText(list + "\\A", "DisplayName", "Tool");
  makeKey(list + "\\B");
  scan();
  EXPECT_EQ(findings(), Rows{shell("B")});
}

TEST_P(UninstallRecordsTest, EachRecordIsTested) {
  makeKey(list + "\\A");
  setText(list + "\\B", "", "text");
  makeKey(list + "\\Z");
  scan();
  EXPECT_EQ(findings(), (Rows{shell("A"), shell("Z")}));
}

TEST_P(UninstallRecordsTest, AListWithoutRecordsGivesOneRecordWithoutAName) {
  emptyKey(list);
  scan();
  EXPECT_EQ(findings(), Rows{shell("")});
}

TEST_P(UninstallRecordsTest, SoDoesAMissingList) {
  removeKey(list);
  scan();
  EXPECT_EQ(findings(), Rows{shell("")});
}

TEST_P(UninstallRecordsTest, WithoutRecordsTheValuesOfTheListItselfAreTested) {
  emptyKey(list);
  setText(list, "Program", gone);
  scan();
  EXPECT_EQ(findings(), Rows{finding("Program", "135", root, subKey)});
}

TEST_P(UninstallRecordsTest, WithRecordsTheyAreNot) {
  setText(list, "Program", gone);
  scan();
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(UninstallRecordsTest, ANumberAsDefaultValueCountsForTheUsersRecordsAlone) {
  setNumber(record, "", 7);
  scan();
  EXPECT_EQ(findings(), isOfUser ? Rows{} : Rows{shell("Record")});
}

TEST_P(UninstallRecordsTest, TheNameOfTheRecordIsListedWithEachFinding) {
  makeKey(list + "\\A");
  setText(record, "a", gone);
  setText(record, "b", gone);
  form.List2.add("left over");
  Texts listed;
  form.messages.serveHost = [&] {
    listed = form.List2.count() > 0 ? fixture::entriesOf(form.List2) : listed;
  };
  setText(list + "\\Z", "", "text");
  scan();
  EXPECT_EQ(listed, (Texts{"A", "Record", "Record"}));
}

TEST_P(UninstallRecordsTest, TheStatusLineNamesTheCategoryAndTheRecord) {
  scan();
  EXPECT_EQ(form.Label4.caption.get(), "Add/Remove programs");
  EXPECT_EQ(form.Label3.caption.get(), "Kept");
}

TEST_P(UninstallRecordsTest, ANewRowIsUntickedAndScrolledIntoView) {
  makeKey(record);
  form.View2.add("font");
  form.Text1.setText("5");
  scan();
  EXPECT_EQ(fixture::findingOf(form, 2), shell("Record"));
  EXPECT_FALSE(form.View2.isChecked(2));
  EXPECT_EQ(form.View2.rowInView(), 2U);
  EXPECT_EQ(form.Text1.text(), "2");
}

TEST_P(UninstallRecordsTest, ARecordIsOpenedToTheUserUnlessItIsOfThe32BitList) {
  scan();
  EXPECT_EQ(isGranted(list + "\\Kept"), !isOf32Bit);
  EXPECT_FALSE(isGranted(list));
}

TEST_P(UninstallRecordsTest, WithoutRecordsTheListItselfIsOpened) {
  emptyKey(list);
  scan();
  EXPECT_EQ(isGranted(list), !isOf32Bit);
}

TEST_P(UninstallRecordsTest, WhatTheUserExcludedIsReportedLikeAnyOther) {
  makeFile(form.programFolder + "\\exregscan.txt", "HKEY_\r\n");
  makeKey(record);
  scan();
  EXPECT_EQ(form.View2.count(), 1U);
  DeleteFileW(Wide(form.programFolder + "\\exregscan.txt").get());
}

}  // namespace
}  // namespace zelvreg
