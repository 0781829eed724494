// The colors of a window exist only on Windows.
#include "desktop/MainWindowFixture.h"
#include "form/Form42.h"

namespace zelvreg::desktop {
namespace {

class ThemeTest : public MainWindowTest {
 protected:
  static constexpr const wchar_t* key =
      L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";

  static void setWindowsDark(bool is) {
    const DWORD isLight = is ? 0 : 1;
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, key, L"AppsUseLightTheme", REG_DWORD, &isLight,
                              sizeof isLight),
              ERROR_SUCCESS);
  }
  Theme theme() { return window.sharedDesk().colors.theme(); }
};

TEST_F(ThemeTest, FollowsWindowsWhileItRuns) {
  EXPECT_EQ(theme(), Theme::Light);
  setWindowsDark(true);
  SendMessageW(window.hwnd(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"ImmersiveColorSet"));
  EXPECT_EQ(theme(), Theme::Dark);
  setWindowsDark(false);
  SendMessageW(window.hwnd(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"ImmersiveColorSet"));
  EXPECT_EQ(theme(), Theme::Light);
}

TEST_F(ThemeTest, IsWhatTheUserChoosesAtOnce) {
  form.theme.choice = ThemeChoice::Dark;
  EXPECT_EQ(theme(), Theme::Dark);
  form.theme.choice = ThemeChoice::Light;
  setWindowsDark(true);
  SendMessageW(window.hwnd(), WM_SETTINGCHANGE, 0, 0);
  EXPECT_EQ(theme(), Theme::Light);
}

TEST_F(ThemeTest, AListAndAFieldGiveTheSystemTheirColors) {
  form.theme.choice = ThemeChoice::Dark;
  const Colors& colors = window.sharedDesk().colors;
  EXPECT_EQ(ListView_GetBkColor(windowOf(form.View2, WC_LISTVIEWW)),
            controls::colorRef(colors[Tone::Surface]));
  HWND combo = windowOf(form.cboFind, L"ComboBox");
  const controls::MemoryContext context;
  SendMessageW(combo, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(context.get()),
               reinterpret_cast<LPARAM>(FindWindowExW(combo, nullptr, L"Edit", nullptr)));
  EXPECT_EQ(GetTextColor(context.get()), controls::colorRef(colors[Tone::Text]));
  EXPECT_EQ(GetBkColor(context.get()), controls::colorRef(colors[Tone::Surface]));
}

}  // namespace
}  // namespace zelvreg::desktop
