#include "shell/SmallForms.h"

#include "form/Version.h"
#include "runtime/DateTime.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class SmallFormsTest : public fixture::ComputerFixture {
 protected:
  SmallFormsTest() { bindClicks(form); }
};

TEST_F(SmallFormsTest, TheDialogAboutTheProgramHidesTheMainFormUntilItIsClosed) {
  bool wasOpen = false;
  form.frmabout.show = [&](AboutDialog& about) {
    wasOpen = about.isOpen && !form.window.visible && about.shadow.visible;
    about.chameleonButton3.click();
  };
  form.chameleonButton18.click();
  EXPECT_TRUE(wasOpen);
  EXPECT_FALSE(form.frmabout.isOpen);
  EXPECT_FALSE(form.frmabout.shadow.visible);
  EXPECT_TRUE(form.window.visible);
}

TEST_F(SmallFormsTest, ItTellsVersionAndYear) {
  form.chameleonButton18.click();
  EXPECT_EQ(form.frmabout.Label3.caption.get(), programVersion());
  EXPECT_NE(form.frmabout.Label2[4].caption.get().find(std::to_string(localDateTime().year)),
            std::string::npos);
  EXPECT_EQ(form.frmabout.Label222[1].caption.get(), "About");
}

TEST_F(SmallFormsTest, BothStandInTheMiddleOfTheScreenInTheColourOfTheSuite) {
  form.screen = {.width = 20000, .height = 10000};
  form.chameleonButton18.click();
  form.chameleonButton5.click();
  EXPECT_EQ(form.frmabout.window.left, (20000 - form.frmabout.window.width) / 2);
  EXPECT_EQ(form.frmabout.window.top, (10000 - form.frmabout.window.height) / 2);
  EXPECT_EQ(form.Form1.window.left, (20000 - form.Form1.window.width) / 2);
  constexpr std::uint32_t usualColor = 10118205;
  EXPECT_EQ(form.frmabout.chameleonButton3.backColor, usualColor);
  EXPECT_EQ(form.frmabout.chameleonButton3.backOver, usualColor);
  EXPECT_EQ(form.Form1.chameleonButton3.backColor, usualColor);
}

TEST_F(SmallFormsTest, WithoutALanguageFileTheirCaptionsStay) {
  form.programFolder = "C:\\nowhere";
  form.Form1.show = [](ExclusionDialog& dialog) { dialog.orubutton10.click(); };
  form.chameleonButton5.click();
  EXPECT_EQ(form.Form1.Label222[1].caption.get(), "Exclude Registry Key From Scan");
  EXPECT_EQ(form.Form1.orubutton1.caption.get(), "Add Key");
}

TEST_F(SmallFormsTest, AClosedExclusionDialogCastsNoShadow) {
  bool hadShadow = false;
  form.Form1.show = [&hadShadow](ExclusionDialog& dialog) {
    hadShadow = dialog.shadow.visible;
    dialog.chameleonButton3.click();
  };
  form.chameleonButton5.click();
  EXPECT_TRUE(hadShadow);
  EXPECT_FALSE(form.Form1.shadow.visible);
}

}  // namespace
}  // namespace zelvreg
