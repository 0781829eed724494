// The resolution of a screen is known only on Windows.
#include <commctrl.h>

#include "desktop/MainWindowFixture.h"
#include "desktop/SmallWindow.h"
#include "desktop/SystemScreen.h"
#include "form/Form42.h"
#include "shell/WindowEvents.h"
#include "shell/WindowMemory.h"

namespace zelvreg::desktop {
namespace {

constexpr std::array resolutions{120, 144, 192, 288, 96};

// A screen with room for the window at each resolution.
class ResolutionTest : public MainWindowTest {
 protected:
  ResolutionTest() {
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &before, 0);
    RECT roomy{0, 0, 4000, 3000};
    SystemParametersInfoW(SPI_SETWORKAREA, 0, &roomy, 0);
  }
  ~ResolutionTest() override { SystemParametersInfoW(SPI_SETWORKAREA, 0, &before, 0); }

  static void tell(HWND hwnd, int resolution, RECT suggested = {30, 40, 50, 60}) {
    SendMessageW(hwnd, resolutionChanged, MAKEWPARAM(resolution, resolution),
                 reinterpret_cast<LPARAM>(&suggested));
  }
  static SIZE sizeOf(HWND hwnd) {
    RECT place{};
    GetWindowRect(hwnd, &place);
    return {place.right - place.left, place.bottom - place.top};
  }
  // Of the text of a field: where it begins, and how much is free below it.
  struct Margins {
    LONG above;
    LONG below;
  };
  static Margins marginsOf(HWND inner, HWND outer) {
    RECT all{};
    RECT text{};
    GetWindowRect(outer, &all);
    GetClientRect(inner, &text);
    MapWindowPoints(inner, nullptr, reinterpret_cast<POINT*>(&text), 2);
    return {text.top - all.top, all.bottom - text.bottom};
  }

  RECT before{};
};

class SmallWindowTest : public ResolutionTest {
 protected:
  SmallWindowTest() {
    small.add(button, {300, 130, 100, 32}, ButtonRole::Primary, "");
    small.add(box, {20, 84, 440, 26}, name);
  }

  FormWindow shown{7200, 3000};
  DropShadow shadow;
  Button button{"OK"};
  TextBox box;
  Label name;
  SmallWindow small{window.sharedDesk(), shown, shadow, window.hwnd(), [] {}, {.title = "Small"}};
};

TEST_F(SmallWindowTest, FollowsTheResolutionOfItsScreenAndItsOwnerDoesNot) {
  const int ofOwner = window.sharedDesk().resolution();
  for (const int resolution : resolutions) {
    tell(small.hwnd(), resolution);
    RECT place{};
    GetWindowRect(small.hwnd(), &place);
    EXPECT_EQ(place.left, 30);
    EXPECT_EQ(place.top, 40);
    EXPECT_EQ(place.right - place.left, 480 * resolution / 96);
    EXPECT_EQ(place.bottom - place.top, 200 * resolution / 96);
    RECT ofButton{};
    GetWindowRect(FindWindowExW(small.hwnd(), nullptr, L"Button", nullptr), &ofButton);
    EXPECT_EQ(ofButton.right - ofButton.left, MulDiv(100, resolution, 96));
    EXPECT_EQ(ofButton.left - place.left, MulDiv(300, resolution, 96));
  }
  EXPECT_EQ(window.sharedDesk().resolution(), ofOwner);
}

TEST_F(SmallWindowTest, ANewThemeReachesItWhileItIsOpen) {
  ShowWindow(small.hwnd(), SW_SHOW);
  UpdateWindow(small.hwnd());
  ASSERT_EQ(GetUpdateRect(small.hwnd(), nullptr, FALSE), FALSE);
  form.theme.choice = ThemeChoice::Dark;
  EXPECT_NE(GetUpdateRect(small.hwnd(), nullptr, FALSE), FALSE) << "it is drawn again";
  const controls::MemoryContext context;
  SendMessageW(small.hwnd(), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(context.get()),
               reinterpret_cast<LPARAM>(FindWindowExW(small.hwnd(), nullptr, L"Edit", nullptr)));
  EXPECT_EQ(GetBkColor(context.get()),
            controls::colorRef(window.sharedDesk().colors[Tone::Surface]));
  EXPECT_EQ(window.sharedDesk().colors.theme(), Theme::Dark);
}

TEST_F(ResolutionTest, ASmallWindowOpensAtTheResolutionOfItsOwnScreenAndAllOfItIsThere) {
  tell(window.hwnd(), 192);
  FormWindow shown(7200, 3000);
  shown.left = 900'000;
  shown.top = -900'000;
  DropShadow shadow;
  const SmallWindow small(window.sharedDesk(), shown, shadow, window.hwnd(), [] {},
                          {.title = "Small"});
  const int resolution = resolutionOf(small.hwnd());
  ASSERT_NE(resolution, window.sharedDesk().resolution());
  RECT place{};
  GetWindowRect(small.hwnd(), &place);
  EXPECT_EQ(place.right - place.left, 480 * resolution / 96);
  EXPECT_EQ(place.bottom - place.top, 200 * resolution / 96);
  const RECT area = areasAround(small.hwnd()).work;
  EXPECT_EQ(place.right, area.right);
  EXPECT_EQ(place.top, area.top);
}

TEST_F(ResolutionTest, AMaximizedWindowStaysSoAndGoesBackToItsSizeAtTheNewResolution) {
  form.MaximizeButton.bind([this] { MaximizeButton_Click(form); });
  keepWindowMemory({.left = 10, .top = 20, .width = windowWidth, .height = windowHeight});
  form.window.visible = true;
  SendMessageW(window.hwnd(), WM_NCLBUTTONDBLCLK, HTCAPTION, 0);
  const SIZE maximized = sizeOf(window.hwnd());
  tell(window.hwnd(), 144);
  EXPECT_NE(IsZoomed(window.hwnd()), FALSE);
  EXPECT_EQ(sizeOf(window.hwnd()).cx, maximized.cx);
  EXPECT_EQ(sizeOf(window.hwnd()).cy, maximized.cy);
  EXPECT_EQ(form.window.width, MulDiv(maximized.cx, 1440, 144));
  SendMessageW(window.hwnd(), WM_NCLBUTTONDBLCLK, HTCAPTION, 0);
  EXPECT_EQ(sizeOf(window.hwnd()).cx, windowWidth * 3 / 2);
  EXPECT_EQ(sizeOf(window.hwnd()).cy, windowHeight * 3 / 2);
}

TEST_F(ResolutionTest, TheRememberedSizeIsThatAt96DotsPerInch) {
  form.window.visible = true;
  tell(window.hwnd(), 192);
  MINMAXINFO limits{};
  SendMessageW(window.hwnd(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  EXPECT_EQ(limits.ptMinTrackSize.x, windowWidth * 2);
  EXPECT_EQ(limits.ptMinTrackSize.y, windowHeight * 2);
  SetWindowPos(window.hwnd(), nullptr, 0, 0, 2200, 1400, SWP_NOMOVE | SWP_NOZORDER);
  SendMessageW(window.hwnd(), WM_EXITSIZEMOVE, 0, 0);
  EXPECT_EQ(readWindowMemory()->width, 1100);
  EXPECT_EQ(readWindowMemory()->height, 700);
}

TEST_F(ResolutionTest, TheIconOfTheWindowHasTheSizeThatIsShown) {
  for (const int resolution : resolutions) {
    tell(window.hwnd(), resolution);
    for (const auto& [kind, length] : {std::pair(ICON_SMALL, 16), std::pair(ICON_BIG, 32)}) {
      const auto icon = reinterpret_cast<HICON>(
          SendMessageW(window.hwnd(), WM_GETICON, static_cast<WPARAM>(kind), 0));
      ICONINFO parts{};
      ASSERT_NE(GetIconInfo(icon, &parts), FALSE);
      const controls::BitmapHandle colors(parts.hbmColor);
      const controls::BitmapHandle mask(parts.hbmMask);
      BITMAP bitmap{};
      GetObjectW(colors.get(), sizeof bitmap, &bitmap);
      EXPECT_EQ(bitmap.bmWidth, MulDiv(length, resolution, 96));
    }
  }
}

TEST_F(ResolutionTest, ATextStandsInTheMiddleOfItsField) {
  HWND filter = windowOf(form.FilterBox, L"Edit");
  HWND editable = windowOf(form.cboFind, L"ComboBox");
  HWND list = windowOf(form.cboRoot, L"ComboBox");
  HWND field = FindWindowExW(editable, nullptr, L"Edit", nullptr);
  for (const int resolution : resolutions) {
    tell(window.hwnd(), resolution);
    const Desk& desk = window.sharedDesk();
    EXPECT_EQ(sizeOf(editable).cy, desk.fromTwips(form.cboFind.height));
    EXPECT_EQ(sizeOf(list).cy, desk.fromTwips(form.cboRoot.height));
    for (const auto& [inner, outer] : {std::pair(filter, filter), std::pair(field, editable)}) {
      const auto [above, below] = marginsOf(inner, outer);
      EXPECT_GT(above, 0);
      EXPECT_LE(std::abs(above - below), 2) << resolution;
    }
    RECT all{};
    RECT text{};
    GetWindowRect(editable, &all);
    GetWindowRect(field, &text);
    EXPECT_EQ(all.right - text.right, desk.pixels(18)) << "room for the arrow";
  }
}

}  // namespace
}  // namespace zelvreg::desktop
