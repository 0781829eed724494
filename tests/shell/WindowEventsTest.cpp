#include "shell/WindowEvents.h"

#include "runtime/DateTime.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class WindowEventsTest : public fixture::ComputerFixture {
 protected:
  WindowEventsTest() { bindClicks(form); }
};

TEST_F(WindowEventsTest, TheLoadCentersTheWindowOnTheScreen) {
  form.screen = {.width = 20000, .height = 10001};
  Form_Load(form);
  EXPECT_EQ(form.window.left, (20000 - 15390) / 2);
  EXPECT_EQ(form.window.top, (10001 - 9180) / 2);
  EXPECT_TRUE(form.Timer1.isEnabled());
}

TEST_F(WindowEventsTest, TheLoadShowsTheYearInTwoOfItsFourLabels) {
  Form_Load(form);
  const std::string year = std::to_string(localDateTime().year);
  EXPECT_EQ(form.Label12[0].caption.get(), "");
  EXPECT_EQ(form.Label12[1].caption.get(), "");
  EXPECT_EQ(form.Label12[2].caption.get(), year);
  EXPECT_EQ(form.Label12[3].caption.get(), year);
}

TEST_F(WindowEventsTest, TheLoadMakesAllHeadersFlatAndKeepsThePlaceOfAPicture) {
  form.Image44[5].left = 77;
  Form_Load(form);
  for (const ListView* list : {&form.View1, &form.View2, &form.View3, &form.View4}) {
    EXPECT_TRUE(list->hasFlatHeader);
  }
  EXPECT_EQ(form.leftOfImage44, 77);
}

TEST_F(WindowEventsTest, AButtonMaximizesTheWindowAndGivesItsSizeBack) {
  form.MaximizeButton.click();
  EXPECT_EQ(form.window.windowState, WindowState::Maximized);
  form.MaximizeButton.click();
  EXPECT_EQ(form.window.windowState, WindowState::Normal);
}

TEST_F(WindowEventsTest, TheWindowMovesDownByAThousandTwipsPerTick) {
  form.window.visible = false;
  const int place = (form.screen.height - form.window.height) / 2;
  form.window.top = place - 1500;
  form.Timer1.enable(true);
  Timer1_Timer(form);
  EXPECT_EQ(form.window.top, place - 500);
  EXPECT_FALSE(form.window.visible);
  Timer1_Timer(form);
  EXPECT_EQ(form.window.top, place + 500);
  EXPECT_FALSE(form.window.visible);
  Timer1_Timer(form);
  EXPECT_EQ(form.window.top, place);
  EXPECT_TRUE(form.window.visible);
  EXPECT_FALSE(form.Timer1.isEnabled());
}

TEST_F(WindowEventsTest, AWindowHiddenByTheCommandLineIsShownAfterAll) {
  form.hasCommandLine = true;
  form.commandText = "d";
  form.window.visible = false;
  Form_Load(form);
  EXPECT_FALSE(form.window.visible);
  Timer1_Timer(form);
  EXPECT_TRUE(form.window.visible);
}

TEST_F(WindowEventsTest, OnlyAPlainStartDrawsTheShadow) {
  form.hasCommandLine = true;
  Form_Activate(form);
  EXPECT_FALSE(form.shadow.visible);
  form.hasCommandLine = false;
  Form_Activate(form);
  EXPECT_TRUE(form.shadow.visible);
  EXPECT_EQ(form.shadow.foreColor, 0x808080U);
  EXPECT_EQ(form.shadow.depth, 10);
}

TEST_F(WindowEventsTest, AMinimizedWindowLeavesOnlyItsIcon) {
  Form_Activate(form);
  form.chameleonButton23.click();
  EXPECT_EQ(form.window.windowState, WindowState::Minimized);
  EXPECT_TRUE(form.window.visible);
  Form_Resize(form);
  EXPECT_FALSE(form.shadow.visible);
  EXPECT_FALSE(form.window.visible);
  EXPECT_TRUE(form.TrayArea1.visible);
  EXPECT_EQ(form.TrayArea1.toolTip.get(), "Fix Registry Problems");
}

TEST_F(WindowEventsTest, AWindowThatIsResizedButNotMinimizedStaysVisible) {
  Form_Resize(form);
  EXPECT_TRUE(form.window.visible);
  EXPECT_FALSE(form.TrayArea1.visible);
}

TEST_F(WindowEventsTest, APressOnTheIconBringsTheWindowBack) {
  form.hasCommandLine = true;
  form.chameleonButton23.click();
  Form_Resize(form);
  ASSERT_TRUE(form.TrayArea1.visible);
  form.shadow.foreColor = 0;
  form.shadow.depth = 1;
  form.TrayArea1.click();
  EXPECT_TRUE(form.window.visible);
  EXPECT_TRUE(form.shadow.visible);
  EXPECT_EQ(form.shadow.foreColor, 0x808080U);
  EXPECT_EQ(form.shadow.depth, 10);
  EXPECT_FALSE(form.TrayArea1.visible);
  EXPECT_EQ(form.window.windowState, WindowState::Normal);
}

TEST_F(WindowEventsTest, ThePictureOfHelpOpensTheHelpFileAtItsContext) {
  std::string opened;
  form.programFolder = "C:\\program";
  form.openHelp = [&opened](const std::string& file, int context) {
    opened = file + " at " + std::to_string(context);
  };
  Image44_Click(form);
  EXPECT_EQ(opened, "C:\\program\\zelvhelp.chm at 4");
}

TEST_F(WindowEventsTest, AFormThatIsClosedStoresItsTicks) {
  const std::string ticks =
      "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\timer\\reg";
  emptyKey(ticks);
  Form_Load(form);
  form.View1.setChecked(1, false);
  form.View1.setChecked(2, true);
  form.View1.setChecked(16, true);
  Form_Unload(form);
  EXPECT_EQ(storedText(ticks, "font"), "0");
  EXPECT_EQ(storedText(ticks, "dll"), "1");
  EXPECT_EQ(storedText(ticks, "16"), "1");
}

TEST_F(WindowEventsTest, ARepaintReachesTheListsAndTheResultsPage) {
  struct Counter : ControlPeer {
    int repaints = 0;
    void changed(const Control&, Change what, std::size_t) override {
      repaints += what == Change::Repaint ? 1 : 0;
    }
  } counter;
  for (Control* control : std::initializer_list<Control*>{&form.View1, &form.View2, &form.Frame2}) {
    control->attach(&counter);
  }
  Form_Paint(form);
  EXPECT_EQ(counter.repaints, 3);
}

}  // namespace
}  // namespace zelvreg
