#include "desktop/CenteredDialog.h"

#include "desktop/MainWindowFixture.h"

namespace zelvreg::desktop {
namespace {

class CenteredDialogTest : public MainWindowTest {
 protected:
  // A window of the system that belongs to an owner, at the screen's corner.
  static HWND open(HWND owner) {
    return CreateWindowExW(0, L"#32770", L"", WS_POPUP, 0, 0, 300, 200, owner, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
  }
  static RECT activated(HWND dialog) {
    ShowWindow(dialog, SW_SHOW);
    SetActiveWindow(dialog);
    RECT place{};
    GetWindowRect(dialog, &place);
    return place;
  }
};

TEST_F(CenteredDialogTest, TheFirstDialogOfTheOwnerOpensInItsMiddle) {
  RECT around{};
  ShowWindow(window.hwnd(), SW_SHOW);
  SetActiveWindow(window.hwnd());
  SetWindowPos(window.hwnd(), nullptr, 0, 0, 700, 500, SWP_NOZORDER);
  GetWindowRect(window.hwnd(), &around);
  HWND first = open(window.hwnd());
  HWND second = open(window.hwnd());
  {
    const CenteredDialog centered(window.hwnd());
    const RECT place = activated(first);
    EXPECT_EQ(place.left, (around.left + around.right - 300) / 2);
    EXPECT_EQ(place.top, (around.top + around.bottom - 200) / 2);
    EXPECT_EQ(activated(second).left, 0);
  }
  DestroyWindow(first);
  DestroyWindow(second);
}

TEST_F(CenteredDialogTest, ItStaysOnTheScreenAndOthersStayWhereTheyAre) {
  ShowWindow(window.hwnd(), SW_SHOW);
  SetActiveWindow(window.hwnd());
  SetWindowPos(window.hwnd(), nullptr, -900, -700, 700, 500, SWP_NOZORDER);
  HWND stranger = open(nullptr);
  HWND dialog = open(window.hwnd());
  {
    const CenteredDialog centered(window.hwnd());
    EXPECT_EQ(activated(stranger).left, 0);
    const RECT place = activated(dialog);
    EXPECT_GE(place.left, 0);
    EXPECT_GE(place.top, 0);
  }
  DestroyWindow(stranger);
  DestroyWindow(dialog);
}

}  // namespace
}  // namespace zelvreg::desktop
