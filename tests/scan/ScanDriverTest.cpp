#include "scan/ScanDriver.h"

#include <functional>

#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

constexpr std::size_t rowCount = 16;

// A form whose scanners only say that they ran; what they find is up to the test.
class ScanDriverTest : public fixture::ComputerFixture {
 protected:
  ScanDriverTest() {
    for (const Category& category : categories()) {
      const std::size_t row = form.View1.add(category.valueName);
      form.View1.setText(row, problemsColumn, "0");
      form.View1.setText(row, statusColumn, "");
    }
    bindScanners();
    form.chameleonButton12.bind([this] { chameleonButton12_Click(form); });
    form.chameleonButton16.bind([this] { chameleonButton16_Click(form); });
    form.dialogs.show = [this](const UserMessage& message) {
      messages.push_back(message);
      return Answer::Ok;
    };
  }

  void bind(EntryPoint& entryPoint, const std::string& name) {
    entryPoint.bind([this, name] {
      ran.push_back(name);
      if (duringScanner) {
        duringScanner(name);
      }
    });
  }

  void bindScanners() {
    bind(form.Command1, "Command1");
    bind(form.Command2, "Command2");
    bind(form.Command5, "Command5");
    bind(form.Command7, "Command7");
    bind(form.Command10, "Command10");
    bind(form.Command12, "Command12");
    bind(form.cln71, "cln71");
    bind(form.cln7, "cln7");
    bind(form.cln72, "cln72");
    bind(form.cln8, "cln8");
    bind(form.cln9, "cln9");
    bind(form.cln10, "cln10");
    bind(form.Command32, "Command32");
    bind(form.fileext, "fileext");
    bind(form.uninstall, "uninstall");
    bind(form.uninstall32, "uninstall32");
    bind(form.runMRU, "runMRU");
    bind(form.MRUhist, "MRUhist");
    bind(form.MuiCache, "MuiCache");
  }

  void checkAll() {
    for (std::size_t row = 1; row <= rowCount; ++row) {
      form.View1.setChecked(row, true);
    }
  }

  void find(std::size_t row) {
    ScannerRun run{.row = form.View2.count() + 1};
    addFinding(form, run, {"x", "y", "1", "HKEY_LOCAL_MACHINE", "Software", "a"});
    showProblems(form, row, run.found);
  }

  std::vector<std::string> ran;
  std::vector<UserMessage> messages;
  std::function<void(const std::string&)> duringScanner;
};

TEST_F(ScanDriverTest, WithoutATickedRowItSaysSoAndLeavesThePanelUp) {
  runScan(form);
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].text, "Please select any item from the list first to perform the test");
  EXPECT_EQ(messages[0].icon, MessageIcon::Information);
  EXPECT_EQ(form.Bar1.value(), 0);
  EXPECT_TRUE(form.Frame8.visible);
  EXPECT_FALSE(form.orubutton1.enabled);
  EXPECT_FALSE(form.chameleonButton10.enabled);
  EXPECT_EQ(form.Text2.text(), "");
  EXPECT_TRUE(ran.empty());
}

TEST_F(ScanDriverTest, CancelBringsTheButtonsBackAfterAnEmptySelection) {
  runScan(form);
  chameleonButton12_Click(form);
  EXPECT_FALSE(form.Frame8.visible);
  EXPECT_TRUE(form.orubutton1.enabled);
}

TEST_F(ScanDriverTest, TheRowsRunTheirRoutinesInTheOrderOfTheTable) {
  checkAll();
  runScan(form);
  EXPECT_EQ(ran, (std::vector<std::string>{
                     "Command1", "Command2", "Command5", "Command7", "Command10", "Command12",
                     "cln71", "cln7", "cln72", "cln8", "cln9", "cln10", "Command32", "fileext",
                     "uninstall", "uninstall32", "runMRU", "MRUhist", "MuiCache"}));
}

TEST_F(ScanDriverTest, OnlyTickedRowsRun) {
  form.View1.setChecked(2, true);
  form.View1.setChecked(13, true);
  runScan(form);
  EXPECT_EQ(ran, (std::vector<std::string>{"Command2", "uninstall", "uninstall32"}));
  EXPECT_EQ(form.Bar1.maximum(), 2);
  EXPECT_EQ(form.Bar1.value(), 2);
}

TEST_F(ScanDriverTest, EarlyRowsMoveTheBarWhenTheyAreDoneAndLateOnesWhenTheyBegin) {
  std::vector<int> values;
  duringScanner = [&](const std::string& /*name*/) { values.push_back(form.Bar1.value()); };
  form.View1.setChecked(10, true);
  form.View1.setChecked(11, true);
  runScan(form);
  EXPECT_EQ(values, (std::vector<int>{0, 2}));
}

TEST_F(ScanDriverTest, ARowUnderTestIsRedAndSaysSo) {
  duringScanner = [&](const std::string& /*name*/) {
    EXPECT_EQ(form.View1.rowColor(1), 255U);
    EXPECT_EQ(form.View1.text(1, statusColumn), "Testing");
    EXPECT_EQ(form.View1.reportIcon(1, statusColumn), "ex");
    EXPECT_EQ(form.View1.text(1, problemsColumn), "");
    EXPECT_EQ(form.View1.rowInView(), 1U);
    EXPECT_EQ(form.Text2.text(), "1");
    EXPECT_EQ(form.Text1.text(), "0");
    EXPECT_FALSE(form.cancelRequested);
  };
  form.View1.setChecked(1, true);
  form.cancelRequested = true;
  runScan(form);
  EXPECT_EQ(ran.size(), 1U);
}

TEST_F(ScanDriverTest, ARowWithoutFindingsEndsBlackAndOneWithFindingsStaysRed) {
  duringScanner = [this](const std::string& name) {
    if (name == "Command1") {
      showProblems(form, 1, 0);
    } else {
      find(2);
    }
  };
  form.View1.setChecked(1, true);
  form.View1.setChecked(2, true);
  runScan(form);
  EXPECT_EQ(form.View1.rowColor(1), 0U);
  EXPECT_EQ(form.View1.text(1, problemsColumn), "0");
  EXPECT_EQ(form.View1.text(1, statusColumn), "Finished");
  EXPECT_EQ(form.View1.reportIcon(1, statusColumn), "ch");
  EXPECT_EQ(form.View1.rowColor(2), 255U);
  EXPECT_EQ(form.View1.text(2, problemsColumn), "1");
}

TEST_F(ScanDriverTest, ACancelBeforeTheFirstRowEndsTheScanToo) {
  checkAll();
  form.messages.post([this] { chameleonButton12_Click(form); });
  runScan(form);
  EXPECT_TRUE(ran.empty());
  EXPECT_EQ(form.Text2.text(), "0");
}

TEST_F(ScanDriverTest, ACancelDuringARowSkipsTheRowsAfterAndShowsWhatWasFound) {
  duringScanner = [this](const std::string& name) {
    if (name == "Command2") {
      find(2);
    }
    if (name == "Command5") {
      chameleonButton12_Click(form);
    }
  };
  checkAll();
  runScan(form);
  EXPECT_EQ(ran.back(), "Command5");
  for (std::size_t row = 4; row <= rowCount; ++row) {
    EXPECT_EQ(form.View1.reportIcon(row, statusColumn), "cl") << row;
    EXPECT_EQ(form.View1.text(row, statusColumn), "") << row;
    EXPECT_EQ(form.View1.text(row, problemsColumn), "") << row;
  }
  EXPECT_TRUE(form.Frame2.visible);
  EXPECT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.Text2.text(), "0");
}

TEST_F(ScanDriverTest, ASecondScanStartsWithAnEmptyListAndGoesOnCounting) {
  duringScanner = [this](const std::string& /*name*/) { find(1); };
  form.View1.setChecked(1, true);
  runScan(form);
  runScan(form);
  EXPECT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.totalFound, 2);
  EXPECT_EQ(form.totalFoundText, "2");
}

TEST_F(ScanDriverTest, TheFormSaysWhichRowIsTestedUntilTheScanEnds) {
  std::vector<std::optional<std::size_t>> tested;
  duringScanner = [&](const std::string& /*name*/) { tested.push_back(form.testedRow); };
  form.lookAgain.bind([&] { tested.push_back(form.testedRow); });
  form.View1.setChecked(2, true);
  form.View1.setChecked(9, true);
  runScan(form);
  EXPECT_EQ(tested, (std::vector<std::optional<std::size_t>>{2, 9, 0}));
  EXPECT_EQ(form.testedRow, std::nullopt);
}

TEST_F(ScanDriverTest, TheResultsPageOpensWithAllRowsTicked) {
  duringScanner = [this](const std::string& /*name*/) { find(1); };
  form.Frame1.left = 300;
  form.Frame1.top = 400;
  form.View1.setChecked(1, true);
  runScan(form);
  EXPECT_TRUE(form.View2.isChecked(1));
  EXPECT_TRUE(form.Frame2.visible);
  EXPECT_FALSE(form.Frame1.visible);
  EXPECT_FALSE(form.Frame8.visible);
  EXPECT_EQ(form.Frame2.left, 300);
  EXPECT_EQ(form.Frame2.top, 400);
  EXPECT_EQ(form.Label3.caption.get(), "1 Problem(s) Found ");
  EXPECT_EQ(form.Label4.caption.get(), "Total Problems Found");
  EXPECT_EQ(form.Label10.caption.get(), " 1");
  EXPECT_EQ(form.Shape1.foreColor, 192U);
  EXPECT_TRUE(form.cmd_fix.enabled);
  EXPECT_TRUE(form.orubutton2.enabled);
  EXPECT_FALSE(form.cmd_cancel.enabled);
}

TEST_F(ScanDriverTest, WithoutFindingsTheCommandsOnThemStayOff) {
  form.View1.setChecked(1, true);
  form.cmd_fix.enabled = false;
  runScan(form);
  EXPECT_FALSE(form.cmd_fix.enabled);
  EXPECT_FALSE(form.orubutton2.enabled);
  EXPECT_TRUE(form.cancelRequested);
  EXPECT_TRUE(form.cmd_start.enabled);
}

TEST_F(ScanDriverTest, StartPassesThroughTheCancelledStateAndTurnsTheCommandsOff) {
  std::vector<std::string> states;
  form.Text2.onChange = [&] { states.push_back(form.Text2.text()); };
  duringScanner = [this](const std::string& /*name*/) {
    EXPECT_FALSE(form.cmd_start.enabled);
    EXPECT_FALSE(form.cmd_search.enabled);
    EXPECT_TRUE(form.cmd_cancel.enabled);
  };
  form.View1.setChecked(1, true);
  cmd_start_Click(form);
  EXPECT_EQ(states, (std::vector<std::string>{"2", "1", "0"}));
  EXPECT_TRUE(form.cmd_start.enabled);
  EXPECT_FALSE(form.cmd_cancel.enabled);
}

TEST_F(ScanDriverTest, CancelDuringAScanTicksWhatWasFoundSoFar) {
  duringScanner = [this](const std::string& /*name*/) {
    find(1);
    cmd_cancel_Click(form);
    EXPECT_TRUE(form.View2.isChecked(1));
    EXPECT_TRUE(form.cmd_fix.enabled);
    EXPECT_TRUE(form.Frame2.visible);
  };
  checkAll();
  runScan(form);
  EXPECT_EQ(ran.size(), 1U);
}

TEST_F(ScanDriverTest, EveryRowsTickIsKept) {
  const std::string place =
      "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\timer\\reg";
  emptyKey(place);
  form.View1.setChecked(1, true);
  form.View1.setChecked(16, true);
  saveSelection(form);
  EXPECT_EQ(storedText(place, "font"), "1");
  EXPECT_EQ(storedText(place, "dll"), "0");
  EXPECT_EQ(storedText(place, "16"), "1");
  checkAll();
  restoreSelection(form);
  EXPECT_TRUE(form.View1.isChecked(1));
  EXPECT_FALSE(form.View1.isChecked(2));
  EXPECT_TRUE(form.View1.isChecked(16));
}

TEST_F(ScanDriverTest, ATickThatWasNeverKeptIsNotSet) {
  const std::string place =
      "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\timer\\reg";
  emptyKey(place);
  setText(place, "font", "1 and more");
  setText(place, "dll", "2");
  checkAll();
  restoreSelection(form);
  EXPECT_TRUE(form.View1.isChecked(1));
  EXPECT_FALSE(form.View1.isChecked(2));
  EXPECT_FALSE(form.View1.isChecked(3));
}

TEST_F(ScanDriverTest, AtTheFirstStartEverythingIsTicked) {
  const auto ticked = [this] {
    std::size_t count = 0;
    for (std::size_t row = 1; row <= form.View1.count(); ++row) {
      count += form.View1.isChecked(row) ? 1U : 0U;
    }
    return count;
  };
  removeKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\timer");
  restoreSelection(form);
  EXPECT_EQ(ticked(), 0U);
  form.safeguards = {};
  restoreSelection(form);
  EXPECT_EQ(ticked(), form.View1.count());
  form.commandText = "w4";
  restoreSelection(form);
  EXPECT_EQ(ticked(), 0U);
}

}  // namespace
}  // namespace zelvreg
