#include "shell/ResultsFilter.h"

#include <numeric>

#include "repair/RepairDriver.h"
#include "scan/Findings.h"
#include "scan/ScanPanel.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class ResultsFilterTest : public fixture::ComputerFixture {
 protected:
  ResultsFilterTest() {
    bindClicks(form);
    add("Quill Script", "quill.ttf", "Software\\Fonts");
    add("Härbour", "harbour.ttf", "Software\\Fonts");
    add("OldTool", "oldtool.exe", "Software\\Run");
  }

  void add(const std::string& location, const std::string& badValue, const std::string& subKey) {
    ScannerRun run;
    addRow(form, run, {location, badValue, "1", "HKEY_LOCAL_MACHINE", subKey, "a"});
  }
  [[nodiscard]] std::string shownRows() const {
    std::string rows;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      rows += form.View2.isHidden(row) ? "" : std::to_string(row);
    }
    return rows;
  }
  [[nodiscard]] std::string tickedRows() const {
    std::string rows;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      rows += form.View2.isChecked(row) ? std::to_string(row) : "";
    }
    return rows;
  }
};

TEST_F(ResultsFilterTest, AnyCellThatIsSeenMayHoldTheTextWhateverItsCase) {
  const struct {
    const char* text;
    const char* rows;
  } table[] = {{"QUILL", "1"},
               {".ttf", "12"},
               {"fonts", "12"},
               {"run", "3"},
               {"hÄrB", "2"},
               {"hkey_", "123"},
               {"", "123"},
               {"nothing", ""},
               // The kind is in a column that nobody sees.
               {"1", ""}};
  for (const auto& [text, rows] : table) {
    form.FilterBox.setText(text);
    EXPECT_EQ(shownRows(), rows) << text;
  }
}

TEST_F(ResultsFilterTest, ItSaysHowManyRowsAreShown) {
  EXPECT_EQ(form.FilterText.caption.get(), "");
  form.FilterBox.setText("ttf");
  EXPECT_EQ(form.FilterText.caption.get(), "2 of 3 shown");
  form.FilterBox.setText("");
  EXPECT_EQ(form.FilterText.caption.get(), "");
}

TEST_F(ResultsFilterTest, SelectAllAndSelectNoneActOnTheRowsThatAreShown) {
  form.View2.setChecked(3, true);
  form.FilterBox.setText("ttf");
  form.chameleonButton16.click();
  EXPECT_EQ(tickedRows(), "123");
  form.View2.setSelected(1, true);
  form.chameleonButton17.click();
  EXPECT_EQ(tickedRows(), "3");
  EXPECT_FALSE(form.View2.isSelected(1));
}

TEST_F(ResultsFilterTest, ARowThatIsHiddenIsNoLongerHighlighted) {
  form.View2.select(3);
  form.FilterBox.setText("ttf");
  EXPECT_FALSE(form.View2.isSelected(3));
  EXPECT_EQ(form.View2.selectedRow(), 0U);
  EXPECT_EQ(form.View2.selectedCount(), 0U);
}

TEST_F(ResultsFilterTest, TheQuestionBeforeARepairCountsTickedRowsThatAreHidden) {
  std::string question;
  form.dialogs.show = [&question](const UserMessage& message) {
    question = message.text;
    return Answer::No;
  };
  form.safeguards.careful = false;
  form.chameleonButton16.click();
  runRepair(form);
  EXPECT_EQ(question, "Do You want to Fix selected items");
  form.FilterBox.setText("run");
  runRepair(form);
  EXPECT_EQ(question, "Do You want to Fix selected items\n\nTicked rows that the filter hides: 2");
}

TEST_F(ResultsFilterTest, OfManyRowsTheQueueHasTheRest) {
  constexpr std::size_t many = 10000;
  while (form.View2.count() < many) {
    add("more", "", "");
  }
  form.FilterBox.setText("quill");
  EXPECT_LT(form.View2.hiddenCount(), many - 1);
  int turns = 0;
  for (; form.messages.hasPosted(); ++turns) {
    form.messages.doEvents();
  }
  EXPECT_GT(turns, 2);
  EXPECT_EQ(shownRows(), "1");
}

TEST_F(ResultsFilterTest, RowsThatComeAreFilteredAndRowsThatGoTakeNothingElseAlong) {
  form.FilterBox.setText("ttf");
  add("Late", "late.ttf", "");
  add("Later", "later.exe", "");
  followResults(form);
  EXPECT_EQ(shownRows(), "124");
  form.View2.remove(1);
  followResults(form);
  EXPECT_EQ(shownRows(), "13");
  EXPECT_EQ(form.View2.hiddenCount(), 2U);
  form.View2.removeWhere([](std::size_t row) { return row == 2; });
  EXPECT_EQ(form.View2.hiddenCount(), 1U);
  form.View2.clear();
  EXPECT_EQ(form.View2.hiddenCount(), 0U);
}

TEST_F(ResultsFilterTest, ABarShowsItsCategoryAndPressedAgainAll) {
  ScannerRun run;
  addRow(form, run, {"help", "gone.chm", "4", "HKEY_LOCAL_MACHINE", "Software\\Help", "k"});
  addRow(form, run, {"mui", "gone.exe", "16", "HKEY_CURRENT_USER", "Software\\Mui", "mui"});
  addRow(form, run, {"searched", "gone.exe", "", "HKEY_CURRENT_USER", "Software", ""});
  const auto counts = countByCategory(form);
  EXPECT_EQ(counts[0], 3U);
  EXPECT_EQ(counts[3], 1U);
  EXPECT_EQ(counts[15], 1U);
  EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), std::size_t{0}), 5U);
  form.CategoryBars[3].click();
  EXPECT_EQ(shownRows(), "4");
  EXPECT_EQ(form.FilterText.caption.get(), "1 of 6 shown");
  form.CategoryBars[0].click();
  EXPECT_EQ(shownRows(), "123");
  form.FilterBox.setText("ttf");
  EXPECT_EQ(shownRows(), "12");
  form.CategoryBars[0].click();
  EXPECT_EQ(shownRows(), "12");
  clearFilter(form);
  EXPECT_EQ(shownRows(), "123456");
}

TEST_F(ResultsFilterTest, AScanBeginsWithoutAFilter) {
  form.CategoryBars[3].click();
  form.FilterBox.setText("ttf");
  openScanPanel(form);
  EXPECT_EQ(form.FilterBox.text(), "");
  EXPECT_EQ(shownRows(), "123");
}

}  // namespace
}  // namespace zelvreg
