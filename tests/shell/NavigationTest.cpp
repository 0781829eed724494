#include "shell/Navigation.h"

#include "form/Form42.h"
#include "form/ProcessEnd.h"
#include "shell/PressFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

const std::string suite =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe";
const std::string folder = "C:\\NavigationTest";

class NavigationTest : public PressFixture {
 protected:
  NavigationTest() {
    form.programFolder = folder;
    form.Frame1.left = 300;
    form.Frame1.top = 400;
    form.dialogs.show = [this](const UserMessage&) {
      ++scans;
      form.chameleonButton10.enabled = true;
      return Answer::Ok;
    };
  }
  ~NavigationTest() override { DeleteFileW(Wide(folder + "\\exregscan.txt").get()); }

  static void expectPlaceOfOptions(const Frame& frame) {
    EXPECT_EQ(frame.left, 300);
    EXPECT_EQ(frame.top, 400);
  }

  // Scans that were started: each shows a message, because no row is ticked.
  int scans = 0;
};

TEST_F(NavigationTest, OnlyTheOptionsPageIsShown) {
  expectAfter([this] { form.orubutton4.click(); },
              {.shown = {&form.Frame1},
               .hidden = {&form.Frame2, &form.Frame3, &form.Frame7, &form.Picture1},
               .enabled = {&form.chameleonButton10, &form.chameleonButton11}});
}

TEST_F(NavigationTest, TheOptionsPageIsTheFirstStepAndStopsWhatRuns) {
  form.wizardPage = 2;
  form.cancelRequested = false;
  form.Frame8.top = 100;
  form.orubutton4.click();
  EXPECT_EQ(form.wizardPage, 0);
  EXPECT_TRUE(form.cancelRequested);
  EXPECT_EQ(form.View1.height.get(), 3600);
}

TEST_F(NavigationTest, OnlyTheExclusionsPageIsShownWhereTheOptionsWere) {
  expectAfter([this] { form.chameleonButton7.click(); },
              {.shown = {&form.Frame7},
               .hidden = {&form.Frame1, &form.Frame2, &form.Frame3, &form.Picture1},
               .enabled = {&form.chameleonButton10, &form.chameleonButton11}});
  expectPlaceOfOptions(form.Frame7);
  EXPECT_EQ(form.wizardPage, 1);
}

TEST_F(NavigationTest, TheExclusionsAreReadAgainEachTime) {
  form.View4.add("old");
  makeFile(folder + "\\exregscan.txt", "HKEY_USERS\\a\r\n");
  form.chameleonButton7.click();
  ASSERT_EQ(form.View4.count(), 1U);
  EXPECT_EQ(form.View4.text(1, 0), "HKEY_USERS\\a");
}

TEST_F(NavigationTest, TheUndoPageIsShownWhereTheOptionsWere) {
  emptyKey(suite + "\\regscan");
  setText(suite + "\\regscan", "saveundo", "1");
  form.View3.add("old");
  expectAfter([this] { form.chameleonButton1.click(); },
              {.shown = {&form.Frame3}, .hidden = {&form.Frame1, &form.Frame7}});
  expectPlaceOfOptions(form.Frame3);
  EXPECT_EQ(form.View3.count(), 0U);
  EXPECT_TRUE(form.Check1.value);
}

TEST_F(NavigationTest, NextLeavesTheOptionsForTheExclusions) {
  int presses = 0;
  count(form.chameleonButton7, presses);
  form.wizardPage = 0;
  expectAfter([this] { form.chameleonButton10.click(); }, {.enabled = {&form.chameleonButton11}});
  EXPECT_EQ(presses, 1);
  EXPECT_EQ(form.wizardPage, 1);
  EXPECT_EQ(scans, 0);
}

TEST_F(NavigationTest, NextLeavesTheExclusionsForAScanAndIsThenOff) {
  form.wizardPage = 1;
  expectAfter([this] { form.chameleonButton10.click(); }, {.disabled = {&form.chameleonButton10}});
  EXPECT_EQ(scans, 1);
  EXPECT_EQ(form.wizardPage, 2);
}

TEST_F(NavigationTest, NextDoesNothingAtTheLastStep) {
  int presses = 0;
  count(form.chameleonButton7, presses);
  count(form.orubutton4, presses);
  form.wizardPage = 2;
  const std::string before = page();
  form.chameleonButton10.click();
  EXPECT_EQ(form.wizardPage, 2);
  EXPECT_EQ(page(), before);
  EXPECT_TRUE(form.chameleonButton10.enabled);
  EXPECT_EQ(scans + presses, 0);
}

TEST_F(NavigationTest, BackLeavesTheResultsForTheExclusions) {
  int presses = 0;
  count(form.chameleonButton7, presses);
  form.wizardPage = 2;
  expectAfter([this] { form.chameleonButton11.click(); }, {.enabled = {&form.chameleonButton10}});
  EXPECT_EQ(presses, 1);
  EXPECT_EQ(form.wizardPage, 1);
}

TEST_F(NavigationTest, BackLeavesTheExclusionsForTheOptionsAndIsThenOff) {
  form.wizardPage = 1;
  expectAfter([this] { form.chameleonButton11.click(); },
              {.shown = {&form.Frame1}, .disabled = {&form.chameleonButton11}});
  EXPECT_EQ(form.wizardPage, 0);
}

TEST_F(NavigationTest, BackDoesNothingAtTheFirstStep) {
  int presses = 0;
  count(form.chameleonButton7, presses);
  count(form.orubutton4, presses);
  form.wizardPage = 0;
  form.chameleonButton11.click();
  EXPECT_EQ(form.wizardPage, 0);
  EXPECT_TRUE(form.chameleonButton11.enabled);
  EXPECT_EQ(presses, 0);
}

TEST_F(NavigationTest, ExitClearsTheDesktopStoresTheTicksAndEndsTheProcess) {
  emptyKey(suite + "\\timer\\reg");
  form.View1.add("fonts");
  form.View1.setChecked(1, true);
  form.menus.drawing = MenuDrawing::InOwnCharset;
  form.shadow.draw(0, 1);
  EXPECT_THROW(form.chameleonButton4.click(), ProcessEnd);
  EXPECT_EQ(form.menus.drawing.get(), MenuDrawing::System);
  EXPECT_FALSE(form.shadow.visible);
  EXPECT_TRUE(form.cancelRequested);
  EXPECT_EQ(storedText(suite + "\\timer\\reg", "font"), "1");
  EXPECT_EQ(storedText(suite + "\\timer\\reg", "dll"), "0");
}

TEST_F(NavigationTest, AFindShowsItsProgressAndThenTheResults) {
  form.cboFind.setText("no text of the registry");
  form.ChKeys.value = true;
  form.cboRoot.add("My Computer");
  form.cboRoot.add("HKEY_CURRENT_USER");
  form.cboRoot.setListIndex(1);
  form.Option1.value = true;
  form.cancelRequested = true;
  bool hadProgress = false;
  form.messages.serveHost = [&] {
    hadProgress = hadProgress || (form.Frame8.visible && form.cmd_cancel.enabled);
    form.cmdFind.click();
  };
  form.cmdFind.click();
  EXPECT_TRUE(hadProgress);
  EXPECT_FALSE(form.Frame8.visible);
  EXPECT_EQ(page(), "results ");
  EXPECT_TRUE(form.cmd_start.enabled);
}

}  // namespace
}  // namespace zelvreg
