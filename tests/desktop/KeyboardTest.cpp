#include "desktop/Keyboard.h"

#include "layout/Layout.h"
#include "shell/Languages.h"
#include "support/ComputerFixture.h"

namespace zelvreg::desktop {
namespace {

class KeyboardTest : public fixture::ComputerFixture {
 protected:
  KeyboardTest() {
    layOut(form);
    for (int entry = 1; entry < 3; ++entry) {
      form.lbllanguage.push_back(std::make_unique<Label>());
    }
  }

  int marked() {
    int found = -1;
    for (std::size_t entry = 0; entry < form.lbllanguage.size(); ++entry) {
      if (form.lbllanguage[entry]->backColor != windowColor) {
        EXPECT_EQ(found, -1) << "two are marked";
        found = static_cast<int>(entry);
      }
    }
    return found;
  }
};

TEST_F(KeyboardTest, EnterSearchesInsideTheSearchControlsAndStartsAScanElsewhere) {
  EXPECT_EQ(buttonOfEnter(form, FocusArea::SearchControls), &form.cmdFind);
  EXPECT_EQ(buttonOfEnter(form, FocusArea::Elsewhere), &form.cmd_start);
}

TEST_F(KeyboardTest, EnterNeverRepairs) {
  form.cmd_start.enabled = false;
  form.cmd_fix.enabled = true;
  EXPECT_EQ(buttonOfEnter(form, FocusArea::Elsewhere), nullptr);
}

TEST_F(KeyboardTest, EscapeClosesThePickerThenStopsWhatRuns) {
  EXPECT_EQ(buttonOfEscape(form), nullptr);
  form.Frame8.visible = true;
  EXPECT_EQ(buttonOfEscape(form), &form.cmd_cancel);
  form.pictrlang.visible = true;
  EXPECT_EQ(buttonOfEscape(form), &form.chameleonButton13);
}

TEST_F(KeyboardTest, F1OpensTheHelpOfThePageThatIsShown) {
  const auto helpOf = [this](Frame& shown) {
    for (Frame* page : {&form.Frame1, &form.Frame2, &form.Frame3, &form.Frame7}) {
      page->visible = page == &shown;
    }
    return topicOfHelpKey(form, FocusArea::Elsewhere).page().name;
  };
  EXPECT_EQ(helpOf(form.Frame1), "options");
  EXPECT_EQ(helpOf(form.Frame2), "results");
  EXPECT_EQ(helpOf(form.Frame3), "undo");
  EXPECT_EQ(helpOf(form.Frame7), "exclusions");
}

TEST_F(KeyboardTest, F1OpensTheHelpOfWhatIsOpenOrRuns) {
  EXPECT_EQ(topicOfHelpKey(form, FocusArea::SearchControls).page().name, "search");
  form.Frame8.visible = true;
  EXPECT_EQ(topicOfHelpKey(form, FocusArea::SearchControls).page().name, "scan");
  form.pictrlang.visible = true;
  EXPECT_EQ(topicOfHelpKey(form, FocusArea::SearchControls).page().name, "language");
}

TEST_F(KeyboardTest, F1OpensTheHelpOfTheChosenCategory) {
  createCategoryRows(form);
  EXPECT_EQ(topicOfHelpKey(form, FocusArea::Categories).page().name, "options");
  form.View1.setSelected(11, true);
  EXPECT_EQ(topicOfHelpKey(form, FocusArea::Categories).page().name, "firewall");
  EXPECT_EQ(topicOfHelpKey(form, FocusArea::Elsewhere).page().name, "options");
}

TEST_F(KeyboardTest, ThePickerOpensAtTheLanguageInUse) {
  PickerKeys keys(form);
  form.langIndex = 2;
  keys.begin();
  EXPECT_EQ(marked(), 2);
  // The stored number may be anything.
  form.langIndex = -7;
  keys.begin();
  EXPECT_EQ(marked(), 0);
  form.langIndex = 900;
  keys.begin();
  EXPECT_EQ(marked(), 2);
}

TEST_F(KeyboardTest, TheArrowsStayInsideThePicker) {
  PickerKeys keys(form);
  form.langIndex = 0;
  keys.begin();
  keys.move(-1);
  EXPECT_EQ(marked(), 0);
  keys.move(1);
  EXPECT_EQ(marked(), 1);
  keys.move(1);
  keys.move(1);
  EXPECT_EQ(marked(), 2);
}

TEST_F(KeyboardTest, TheMarkedLanguageIsChosen) {
  PickerKeys keys(form);
  form.pictrlang.visible = true;
  form.lbllanguage[1]->tag = "german";
  form.langIndex = 0;
  keys.begin();
  keys.move(1);
  keys.choose();
  EXPECT_EQ(form.langIndex, 1);
  EXPECT_EQ(form.langTag, "german");
  EXPECT_FALSE(form.pictrlang.visible);
}

}  // namespace
}  // namespace zelvreg::desktop
