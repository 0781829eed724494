// What a press on Start and Cancel, and a scan that begins and ends, does to what is seen and to
// what can be pressed.
#include "scan/ScanPanel.h"

#include <set>

#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/ScanDriver.h"
#include "shell/PressFixture.h"

namespace zelvreg {
namespace {

// The controls that were painted again.
class Repaints : public ControlPeer {
 public:
  void changed(const Control& control, Change what, std::size_t /*row*/) override {
    if (what == Change::Repaint) {
      painted.insert(&control);
    }
  }
  [[nodiscard]] bool has(const Control& control) const { return painted.contains(&control); }

 private:
  std::set<const Control*> painted;
};

class ScanPanelTest : public PressFixture {
 protected:
  ScanPanelTest() {
    for (const Category& category : categories()) {
      form.View1.setText(form.View1.add(category.valueName), problemsColumn, "7");
    }
    for (Label* label : {&form.Label2[3], &form.Label2[4], &form.Label3}) {
      label->attach(&repaints);
    }
    form.Frame1.left = 300;
    form.Frame1.top = 400;
    form.dialogs.show = [this](const UserMessage&) {
      atMessage();
      return Answer::Ok;
    };
    // What a scan finds is up to the test.
    form.MuiCache.bind([this] { duringScan(); });
    form.Command29.bind([this] { atExclusions(); });
  }

  void find() {
    ScannerRun run;
    addRow(form, run, {"x", "y", "1", "HKEY_LOCAL_MACHINE", "Software", "a"});
  }
  void scanOneRow() {
    form.View1.setChecked(form.View1.count(), true);
    runScan(form);
  }
  void expectResultsWhereTheOptionsWere() const {
    EXPECT_EQ(page(), "results ");
    EXPECT_EQ(form.Frame2.left, 300);
    EXPECT_EQ(form.Frame2.top, 400);
  }
  Controls commandsOnFindings() {
    return {&form.cmd_fix, &form.cmd_all, &form.cmd_non, &form.cmd_report};
  }
  Controls idleCommands() { return {&form.cmd_search, &form.cmd_exclud, &form.cmd_start}; }
  static Controls together(Controls first, const Controls& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
  }

  Repaints repaints;
  std::function<void()> atMessage = [] {};
  std::function<void()> duringScan = [] {};
  std::function<void()> atExclusions = [] {};
};

TEST_F(ScanPanelTest, AScanShowsItsProgressAndTurnsOffWhatWouldDisturbIt) {
  expectAfter([this] { openScanPanel(form); },
              {.shown = {&form.Gif89a1, &form.Frame8, &form.Label3, &form.Label4, &form.Frame1},
               .hidden = {&form.Picture1, &form.Frame2, &form.Frame3, &form.Frame7},
               .disabled = {&form.chameleonButton11, &form.chameleonButton1, &form.chameleonButton7,
                            &form.orubutton1, &form.orubutton4, &form.chameleonButton10}});
}

TEST_F(ScanPanelTest, AScanIsTheLastStepOfTheWayAndItsBarBeginsAtNothing) {
  form.wizardPage = 0;
  form.Bar1.setValue(5);
  openScanPanel(form);
  EXPECT_EQ(form.wizardPage, 2);
  EXPECT_EQ(form.Bar1.value(), 0);
  EXPECT_EQ(form.View1.height.get(), 4208);
  EXPECT_EQ(form.Frame8.top.get(), 60);
}

TEST_F(ScanPanelTest, AScanForgetsTheDetailsAndTheCountsOfTheOneBefore) {
  form.Label5.caption = "details";
  form.Label7.caption = "details";
  form.Label3.caption = "progress";
  form.categoryFound = 9;
  expectAfter([this] { runScan(form); }, {.disabled = {&form.orubutton2, &form.chameleonButton9}});
  EXPECT_EQ(form.Label5.caption.get(), "No Entry Selected");
  EXPECT_EQ(form.Label7.caption.get(), "Please Select entry from the list to show details");
  EXPECT_EQ(form.Label3.caption.get(), "");
  EXPECT_TRUE(repaints.has(form.Label3));
  EXPECT_EQ(form.categoryFound, 0);
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    EXPECT_EQ(form.View1.text(row, problemsColumn), "") << row;
    EXPECT_EQ(form.View1.reportIcon(row, statusColumn), "cl") << row;
  }
}

TEST_F(ScanPanelTest, OnlyAScanOfARowEmptiesTheLists) {
  find();
  form.Text1.setText("1");
  form.List1.add("a");
  form.List2.add("b");
  runScan(form);
  EXPECT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.List1.count() + form.List2.count(), 2);
  EXPECT_EQ(form.Text1.text(), "1");
  EXPECT_FALSE(repaints.has(form.Label2[3]));
  scanOneRow();
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.List1.count() + form.List2.count(), 0);
  EXPECT_EQ(form.Text1.text(), "0");
  EXPECT_TRUE(repaints.has(form.Label2[3]));
  EXPECT_TRUE(repaints.has(form.Label2[4]));
}

TEST_F(ScanPanelTest, AScanThatFoundNothingGoesBackToTheOptionsBeforeItShowsItsResults) {
  std::string pageBefore;
  atExclusions = [&] {
    pageBefore = page();
    EXPECT_FALSE(form.Picture1.visible);
    EXPECT_TRUE(form.cancelRequested);
    EXPECT_EQ(form.Text2.text(), "1");
  };
  duringScan = [this] {
    for (Control* other : Controls{&form.Frame2, &form.Frame3, &form.Frame7, &form.Picture1}) {
      other->visible = true;
    }
    form.Frame1.visible = false;
  };
  scanOneRow();
  EXPECT_EQ(pageBefore, "options ");
  expectResultsWhereTheOptionsWere();
}

TEST_F(ScanPanelTest, AScanThatFoundSomethingLeavesThePageUntilItsEnd) {
  std::string pageBefore;
  atExclusions = [&] {
    pageBefore = page();
    EXPECT_FALSE(form.cancelRequested);
  };
  duringScan = [this] {
    find();
    form.Frame1.visible = false;
    form.Frame3.visible = true;
  };
  scanOneRow();
  EXPECT_EQ(pageBefore, "undo ");
  expectResultsWhereTheOptionsWere();
}

TEST_F(ScanPanelTest, TheResultsComeWithWhatCanBeDoneWithThem) {
  find();
  form.Text2.setText("1");
  expectAfter(
      [this] { closeScanPanel(form); },
      {.shown = {&form.Frame2, &form.Picture1},
       .hidden = {&form.Frame1, &form.Frame3, &form.Frame7, &form.Frame8, &form.Gif89a1},
       .enabled = together(together({&form.chameleonButton9, &form.orubutton2,
                                     &form.chameleonButton1, &form.chameleonButton7,
                                     &form.orubutton4, &form.chameleonButton11, &form.orubutton1},
                                    idleCommands()),
                           commandsOnFindings()),
       .disabled = {&form.cmd_cancel}});
  expectResultsWhereTheOptionsWere();
  EXPECT_TRUE(form.View2.isChecked(1));
  EXPECT_EQ(form.Shape1.foreColor, 192U);
  EXPECT_EQ(form.Text2.text(), "0");
  EXPECT_TRUE(repaints.has(form.Label3));
  EXPECT_EQ(form.Label4.caption.get(), "Total Problems Found");
}

TEST_F(ScanPanelTest, WithoutResultsTheirCommandsAreLeftAsTheyAre) {
  const Controls commands =
      together({&form.chameleonButton9, &form.orubutton2}, commandsOnFindings());
  form.Shape1.foreColor = 7;
  for (const bool before : {false, true}) {
    for (Control* command : commands) {
      command->enabled = before;
    }
    expectAfter([this] { closeScanPanel(form); },
                {.shown = {&form.Picture1},
                 .hidden = {&form.Frame8, &form.Gif89a1},
                 .enabled = together({&form.chameleonButton1, &form.chameleonButton7,
                                      &form.orubutton4, &form.chameleonButton11, &form.orubutton1},
                                     idleCommands()),
                 .disabled = {&form.cmd_cancel}});
    for (const Control* command : commands) {
      EXPECT_EQ(command->enabled, before);
    }
  }
  EXPECT_EQ(form.Shape1.foreColor, 7U);
}

TEST_F(ScanPanelTest, StartStopsWhatRunsAndThenLeavesOnlyCancelOn) {
  bool wasStopped = false;
  form.chameleonButton12.bind([&] { wasStopped = form.cancelRequested; });
  // The scan says that no row is ticked, which is when the test looks.
  int messages = 0;
  const auto begin = [&] {
    atMessage = [&] { ++messages; };
    form.cmd_start.click();
  };
  form.cancelRequested = false;
  expectAfter(begin, {.enabled = {&form.cmd_cancel},
                      .disabled = together(idleCommands(), commandsOnFindings())});
  EXPECT_EQ(messages, 1);
  EXPECT_TRUE(wasStopped);
  EXPECT_TRUE(repaints.has(form.Label2[3]));
  EXPECT_TRUE(repaints.has(form.Label2[4]));
}

TEST_F(ScanPanelTest, CancelStopsAndOffersWhatWasFound) {
  find();
  form.cancelRequested = false;
  expectAfter([this] { form.cmd_cancel.click(); },
              {.shown = {&form.Frame2},
               .hidden = {&form.Frame1, &form.Frame3, &form.Frame7, &form.Frame8},
               .enabled = together(idleCommands(), commandsOnFindings()),
               .disabled = {&form.cmd_cancel}});
  EXPECT_TRUE(form.cancelRequested);
  EXPECT_EQ(form.Text2.text(), "2");
  EXPECT_TRUE(form.View2.isChecked(1));
}

TEST_F(ScanPanelTest, CancelWithoutFindingsOffersNothing) {
  bool wasStopped = false;
  form.chameleonButton12.bind([&] { wasStopped = form.cancelRequested; });
  for (Control* command : commandsOnFindings()) {
    command->enabled = false;
  }
  form.cancelRequested = false;
  expectAfter([this] { form.cmd_cancel.click(); },
              {.enabled = idleCommands(), .disabled = {&form.cmd_cancel}});
  EXPECT_TRUE(wasStopped);
  for (const Control* command : commandsOnFindings()) {
    EXPECT_FALSE(command->enabled);
  }
}

TEST_F(ScanPanelTest, TheCancelOfTheProgressShowsTheResultsAtOnce) {
  form.cancelRequested = false;
  expectAfter([this] { form.chameleonButton12.click(); },
              {.shown = {&form.Frame2},
               .hidden = {&form.Frame1, &form.Frame3, &form.Frame7, &form.Frame8},
               .enabled = {&form.chameleonButton11, &form.orubutton1}});
  expectResultsWhereTheOptionsWere();
  EXPECT_TRUE(form.cancelRequested);
  EXPECT_EQ(form.Text2.text(), "2");
}

}  // namespace
}  // namespace zelvreg
