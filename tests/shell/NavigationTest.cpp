#include "shell/Navigation.h"

#include "form/ProcessEnd.h"
#include "scan/CategoryTable.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class NavigationTest : public fixture::ComputerFixture {
 protected:
  NavigationTest() { bindClicks(form); }

  // The page that is to be seen.
  std::string page() const {
    std::string seen;
    seen += form.Frame1.visible ? "options " : "";
    seen += form.Frame2.visible ? "results " : "";
    seen += form.Frame3.visible ? "undo " : "";
    seen += form.Frame7.visible ? "exclusions " : "";
    return seen;
  }
};

TEST_F(NavigationTest, EachPageHidesTheOthers) {
  form.orubutton4.click();
  EXPECT_EQ(page(), "options ");
  EXPECT_EQ(form.wizardPage, 0);
  form.chameleonButton7.click();
  EXPECT_EQ(page(), "exclusions ");
  EXPECT_EQ(form.wizardPage, 1);
  form.Frame2.visible = false;
  form.chameleonButton1.click();
  EXPECT_EQ(page(), "undo ");
}

TEST_F(NavigationTest, TheOptionsPageStopsWhatRuns) {
  form.Frame8.top = 100;
  form.orubutton4.click();
  EXPECT_TRUE(form.cancelRequested);
  EXPECT_EQ(form.View1.height.get(), 3600);
  EXPECT_TRUE(form.chameleonButton10.enabled);
  EXPECT_TRUE(form.chameleonButton11.enabled);
}

TEST_F(NavigationTest, NextLeadsToExclusionsAndToTheScanAndNoFurther) {
  int asked = 0;
  form.dialogs.show = [&asked](const UserMessage&) {
    ++asked;
    return Answer::Ok;
  };
  form.orubutton4.click();
  form.chameleonButton10.click();
  EXPECT_EQ(form.wizardPage, 1);
  EXPECT_EQ(page(), "exclusions ");
  form.chameleonButton10.click();
  EXPECT_EQ(form.wizardPage, 2);
  EXPECT_EQ(asked, 1);
  EXPECT_FALSE(form.chameleonButton10.enabled);
  form.chameleonButton10.click();
  EXPECT_EQ(asked, 1);
}

TEST_F(NavigationTest, BackLeadsToExclusionsAndToTheOptionsAndNoFurther) {
  form.wizardPage = 2;
  form.chameleonButton11.click();
  EXPECT_EQ(form.wizardPage, 1);
  EXPECT_EQ(page(), "exclusions ");
  form.chameleonButton11.click();
  EXPECT_EQ(form.wizardPage, 0);
  EXPECT_EQ(page(), "options ");
  EXPECT_FALSE(form.chameleonButton11.enabled);
  form.cancelRequested = false;
  form.chameleonButton11.click();
  EXPECT_FALSE(form.cancelRequested);
}

TEST_F(NavigationTest, TheSearchButtonLeadsToTheOptions) {
  form.cmd_start.enabled = false;
  form.cmd_fix.enabled = true;
  form.cmd_search.click();
  EXPECT_EQ(page(), "options ");
  EXPECT_TRUE(form.cmd_start.enabled);
  for (const Button* button : {&form.cmd_fix, &form.cmd_all, &form.cmd_non, &form.cmd_report}) {
    EXPECT_FALSE(button->enabled);
  }
  form.cmd_exclud.click();
  EXPECT_EQ(page(), "exclusions ");
}

TEST_F(NavigationTest, TheToolBarPressesTheSameButtons) {
  form.View2.add("row");
  Toolbar1_ButtonClick(form, 8);
  EXPECT_TRUE(form.View2.isChecked(1));
  Toolbar1_ButtonClick(form, 9);
  EXPECT_FALSE(form.View2.isChecked(1));
  Toolbar1_ButtonClick(form, 2);
  EXPECT_EQ(page(), "exclusions ");
  Toolbar1_ButtonClick(form, 1);
  EXPECT_EQ(page(), "options ");
  Toolbar1_ButtonClick(form, 3);
  Toolbar1_ButtonClick(form, 99);
  EXPECT_EQ(page(), "options ");
}

TEST_F(NavigationTest, ADoubleClickOnARowWithProblemsShowsTheResults) {
  form.View1.add("fonts");
  form.View1.setText(1, problemsColumn, "2");
  form.Gif89a1.visible = false;
  form.orubutton4.click();
  View1_ItemClick(form, 1);
  View1_DblClick(form);
  EXPECT_EQ(page(), "results ");
  EXPECT_TRUE(form.Picture1.visible);
  EXPECT_TRUE(form.cmd_fix.enabled);
}

TEST_F(NavigationTest, ADoubleClickDoesNothingWithoutProblemsOrDuringAScan) {
  form.View1.add("fonts");
  form.Gif89a1.visible = false;
  form.orubutton4.click();
  View1_ItemClick(form, 1);
  for (const char* count : {"", "0"}) {
    form.View1.setText(1, problemsColumn, count);
    View1_DblClick(form);
    EXPECT_EQ(page(), "options ") << count;
  }
  form.View1.setText(1, problemsColumn, "2");
  form.Gif89a1.visible = true;
  View1_DblClick(form);
  EXPECT_EQ(page(), "options ");
}

TEST_F(NavigationTest, ExitKeepsTheTicksAndEndsTheProcess) {
  const std::string ticks =
      "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\timer\\reg";
  emptyKey(ticks);
  EXPECT_THROW(form.chameleonButton4.click(), ProcessEnd);
  EXPECT_EQ(storedText(ticks, "font"), "0");
  EXPECT_TRUE(form.cancelRequested);
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
