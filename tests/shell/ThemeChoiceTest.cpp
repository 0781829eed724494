#include "shell/ThemeChoice.h"

#include <gtest/gtest.h>

#include "form/Form42.h"
#include "scan/Settings.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string ofWindows =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
const std::string ownSettings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan";

class ThemeChoiceTest : public fixture::ComputerFixture {
 protected:
  ThemeChoiceTest() {
    emptyKey(ofWindows);
    emptyKey(ownSettings);
  }
};

TEST_F(ThemeChoiceTest, WithoutAChoiceItIsAsWindowsIs) {
  loadThemeChoice(form);
  EXPECT_EQ(form.theme.choice.get(), ThemeChoice::AsWindows);
  EXPECT_FALSE(isDarkWanted(form));
  setNumber(ofWindows, "AppsUseLightTheme", 0);
  EXPECT_TRUE(isDarkWanted(form));
  setNumber(ofWindows, "AppsUseLightTheme", 1);
  EXPECT_FALSE(isDarkWanted(form));
}

TEST_F(ThemeChoiceTest, ATextThereIsNoAnswerOfWindows) {
  setText(ofWindows, "AppsUseLightTheme", "0");
  EXPECT_FALSE(isDarkWanted(form));
}

TEST_F(ThemeChoiceTest, TheUsersChoiceCountsMoreAndIsKept) {
  setNumber(ofWindows, "AppsUseLightTheme", 0);
  loadThemeChoice(form);
  EXPECT_EQ(form.cboTheme.count(), 3);
  form.cboTheme.setListIndex(1);
  EXPECT_EQ(form.theme.choice.get(), ThemeChoice::Light);
  EXPECT_FALSE(isDarkWanted(form));
  EXPECT_EQ(readSetting(settings::regscan, "theme"), "light");

  Form42 next;
  loadThemeChoice(next);
  EXPECT_EQ(next.theme.choice.get(), ThemeChoice::Light);
  EXPECT_EQ(next.cboTheme.listIndex(), 1);
}

TEST_F(ThemeChoiceTest, AnUnknownChoiceIsNone) {
  keepSetting(settings::regscan, "theme", "purple");
  loadThemeChoice(form);
  EXPECT_EQ(form.theme.choice.get(), ThemeChoice::AsWindows);
  EXPECT_EQ(readSetting(settings::regscan, "theme"), "purple");
}

}  // namespace
}  // namespace zelvreg
