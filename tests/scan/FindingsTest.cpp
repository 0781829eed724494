#include "scan/Findings.h"

#include "scan/CategoryTable.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string countKey =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\real";

class FindingsTest : public fixture::ComputerFixture {
 protected:
  FindingsTest() { emptyKey(countKey); }

  void add(ScannerRun& run, const char* location, const char* icon = "a", const char* kind = "1") {
    addFinding(form, run, {location, " bad ", kind, "HKEY_LOCAL_MACHINE", "Software\\X", icon});
  }
};

TEST_F(FindingsTest, AFindingIsAnUntickedRowWithItsFieldsInTheirCells) {
  ScannerRun run;
  add(run, "here");
  EXPECT_EQ(
      fixture::findingOf(form, 1),
      (std::vector<std::string>{"here", "bad", "1", "HKEY_LOCAL_MACHINE", "Software\\X", "a"}));
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_EQ(form.View2.rowInView(), 1U);
  EXPECT_EQ(fixture::entriesOf(form.List2), (std::vector<std::string>{"bad"}));
}

TEST_F(FindingsTest, EachFindingIsCountedAndTheTotalKept) {
  ScannerRun run;
  add(run, "one");
  add(run, "two");
  EXPECT_EQ(run.row, 3U);
  EXPECT_EQ(run.found, 2);
  EXPECT_EQ(form.totalFound, 2);
  EXPECT_EQ(storedText(countKey, "reg-count"), "2");
}

TEST_F(FindingsTest, ATotalSavedAtTheEndIsNotWrittenBefore) {
  ScannerRun run{.total = TotalIsSaved::AtTheEnd};
  add(run, "one");
  EXPECT_EQ(storedText(countKey, "reg-count"), "(none)");
  saveTotalFound(form);
  EXPECT_EQ(storedText(countKey, "reg-count"), "1");
}

TEST_F(FindingsTest, TheSameKeyFoundTwiceIsListedTwice) {
  ScannerRun first;
  ScannerRun second;
  add(first, "same");
  form.List2.clear();
  add(second, "same");
  EXPECT_EQ(form.View2.count(), 2U);
  EXPECT_EQ(fixture::findingOf(form, 1), fixture::findingOf(form, 2));
}

TEST_F(FindingsTest, ARowWhoseIconIsMissingHasNone) {
  ScannerRun run;
  add(run, "help", "k", "4");
  EXPECT_EQ(form.View2.smallIcon(1), "");
  EXPECT_EQ(form.View2.text(1, kindCodeColumn), "4");
}

TEST_F(FindingsTest, ARowOfAnUnknownKindIsShown) {
  ScannerRun run;
  add(run, "x", "a", "4711");
  EXPECT_EQ(form.View2.text(1, kindCodeColumn), "4711");
}

TEST_F(FindingsTest, NumberedFieldsGoToTheirRowAndTheLocationToTheNewOne) {
  ScannerRun first;
  add(first, "first");
  form.List2.clear();
  ScannerRun second{.row = 1, .fields = FieldsGoTo::NumberedRow};
  add(second, "second", "b", "2");
  EXPECT_EQ(form.View2.text(1, locationColumn), "first");
  EXPECT_EQ(form.View2.text(1, kindCodeColumn), "2");
  EXPECT_EQ(form.View2.smallIcon(1), "b");
  EXPECT_EQ(form.View2.text(2, locationColumn), "second");
  EXPECT_EQ(form.View2.text(2, kindCodeColumn), "");
}

TEST_F(FindingsTest, TheNextRowFollowsTheCountThatWasLeft) {
  EXPECT_EQ(nextRow(form), 1U);
  ScannerRun run;
  add(run, "one");
  storeRowCount(form);
  EXPECT_EQ(form.Text1.text(), "1");
  EXPECT_EQ(nextRow(form), 2U);
}

TEST_F(FindingsTest, SelectAllTicksAndSelectNoneAlsoClearsTheHighlight) {
  ScannerRun run;
  add(run, "one");
  add(run, "two");
  form.View2.select(2);
  chameleonButton16_Click(form);
  EXPECT_TRUE(form.View2.isChecked(1));
  EXPECT_TRUE(form.View2.isChecked(2));
  EXPECT_EQ(form.View2.selectedRow(), 2U);
  chameleonButton17_Click(form);
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_EQ(form.View2.selectedRow(), 0U);
}

TEST_F(FindingsTest, OnAnEmptyListBothDoNothing) {
  chameleonButton16_Click(form);
  chameleonButton17_Click(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(FindingsTest, TheCategoriesHaveTheSamePair) {
  form.View1.add("fonts");
  chameleonButton21_Click(form);
  EXPECT_TRUE(form.View1.isChecked(1));
  chameleonButton22_Click(form);
  EXPECT_FALSE(form.View1.isChecked(1));
}

}  // namespace
}  // namespace zelvreg
