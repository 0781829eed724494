#include "shell/SmallForms.h"

#include <array>
#include <regex>
#include <vector>

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
  const std::regex numbers("[0-9]+\\.[0-9]+\\.[0-9]+");
  EXPECT_TRUE(std::regex_match(form.frmabout.Label3.caption.get(), numbers));
  EXPECT_NE(form.frmabout.Label2[4].caption.get().find(std::to_string(localDateTime().year)),
            std::string::npos);
  EXPECT_EQ(form.frmabout.Label222[1].caption.get(), "About");
}

TEST_F(SmallFormsTest, ATranslatorThatIsMissingIsToldUnlessAllIsDoneToTheLetter) {
  form.programFolder = "C:\\no such folder";
  std::vector<std::string> told;
  form.dialogs.show = [&told](const UserMessage& message) {
    told.push_back(message.text);
    return Answer::Ok;
  };
  form.safeguards = {};
  form.frmabout.Label6.click();
  ASSERT_EQ(told.size(), 1U);
  EXPECT_NE(told.front().find("C:\\no such folder\\zelvtrans.exe"), std::string::npos);
  form.safeguards = asDescribed();
  form.frmabout.Label6.click();
  EXPECT_EQ(told.size(), 1U);
}

TEST_F(SmallFormsTest, BothAreCenteredOnTheScreen) {
  form.screen = {.width = 20000, .height = 10000};
  form.chameleonButton18.click();
  form.chameleonButton5.click();
  EXPECT_EQ(form.frmabout.window.left, (20000 - form.frmabout.window.width) / 2);
  EXPECT_EQ(form.frmabout.window.top, (10000 - form.frmabout.window.height) / 2);
  EXPECT_EQ(form.Form1.window.left, (20000 - form.Form1.window.width) / 2);
  EXPECT_EQ(form.Form1.window.top, (10000 - form.Form1.window.height) / 2);
}

TEST_F(SmallFormsTest, TheirTitleButtonsHaveTheSuitesColorOrTheUsualOne) {
  const std::string settings = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\zelvane tuner";
  const std::array<std::pair<const char*, std::uint32_t>, 3> colors{
      {{"255", 255}, {" ", 10118205}, {"65280", 65280}}};
  for (const auto& [text, color] : colors) {
    emptyKey(settings);
    setText(settings, "color", text);
    form.chameleonButton18.click();
    form.chameleonButton5.click();
    for (const Button* button : {&form.frmabout.chameleonButton3, &form.Form1.chameleonButton3}) {
      EXPECT_EQ(button->backColor, color) << text;
      EXPECT_EQ(button->backOver, color) << text;
    }
  }
  emptyKey(settings);
}

TEST_F(SmallFormsTest, BothCastTheShadowOfTheMainForm) {
  const auto expectShadow = [](const DropShadow& shadow) {
    EXPECT_TRUE(shadow.visible);
    EXPECT_EQ(shadow.foreColor, 0x808080U);
    EXPECT_EQ(shadow.depth, 10);
  };
  form.chameleonButton18.click();
  expectShadow(form.frmabout.shadow);
  form.chameleonButton5.click();
  expectShadow(form.Form1.shadow);
}

TEST_F(SmallFormsTest, WithoutALanguageFileTheirCaptionsDoNotChange) {
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
