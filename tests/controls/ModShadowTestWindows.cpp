// A shadow is a layered window.
#include "controls/modShadow.h"

#include <commctrl.h>

#include <array>

#include "controls/FormFixture.h"
#include "form/Form42.h"

namespace zelvreg::controls {
namespace {

class ModShadow : public ::testing::Test {
 protected:
  ModShadow() { modShadow::create(form.hwnd()); }

  HWND shadow() const { return modShadow::shadowOf(form.hwnd()); }
  Rectangle place() const {
    RECT rectangle{};
    GetWindowRect(shadow(), &rectangle);
    return {static_cast<int>(rectangle.left), static_cast<int>(rectangle.top),
            static_cast<int>(rectangle.right), static_cast<int>(rectangle.bottom)};
  }

  fixture::Form form;
};

TEST_F(ModShadow, IsAWindowOfItsOwnClassThatTheTargetKnows) {
  ASSERT_NE(shadow(), nullptr);
  EXPECT_EQ(GetPropW(form.hwnd(), L"TrickShadow"), static_cast<HANDLE>(shadow()));
  std::array<wchar_t, 32> name{};
  GetClassNameW(shadow(), name.data(), static_cast<int>(name.size()));
  EXPECT_STREQ(name.data(), L"TrickShadow");
  EXPECT_EQ(GetWindowLongW(shadow(), GWL_EXSTYLE) & 0x800A0, 0x800A0);
  EXPECT_TRUE(GetWindowLongW(shadow(), GWL_STYLE) & WS_POPUP);
  EXPECT_TRUE(IsWindowVisible(shadow()));
}

TEST_F(ModShadow, ItsProcedureIsTheSystemsOwn) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  ASSERT_TRUE(GetClassInfoExW(GetModuleHandleW(nullptr), L"TrickShadow", &description));
  EXPECT_EQ(reinterpret_cast<void*>(description.lpfnWndProc),
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32"), "DefWindowProcW")));
  EXPECT_EQ(description.cbWndExtra, 16);
}

TEST_F(ModShadow, ASecondOneIsNotCreated) {
  HWND first = shadow();
  modShadow::create(form.hwnd());
  EXPECT_EQ(shadow(), first);
}

TEST_F(ModShadow, KeepsItsSettingsInItsWindowLongs) {
  modShadow::setColor(form.hwnd(), 0x808080);
  modShadow::setSize(form.hwnd(), 10);
  EXPECT_EQ(GetWindowLongW(shadow(), 0), 10);
  EXPECT_EQ(GetWindowLongW(shadow(), 4), 0x808080);
  const ShadowSettings usual;
  EXPECT_EQ(modShadow::settingsOf(shadow()),
            (ShadowSettings{10, 0x808080, usual.strength, usual.drop}));
}

TEST_F(ModShadow, SurroundsItsTarget) {
  modShadow::setSize(form.hwnd(), 10);
  EXPECT_EQ(place(), shadowPlace({50, 40, 350, 240}, modShadow::settingsOf(shadow())));
}

TEST_F(ModShadow, FollowsItsTarget) {
  modShadow::setSize(form.hwnd(), 10);
  SetWindowPos(form.hwnd(), nullptr, 80, 90, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  EXPECT_EQ(place(), shadowPlace({80, 90, 380, 290}, modShadow::settingsOf(shadow())));
  SetWindowPos(form.hwnd(), nullptr, 80, 90, 120, 70, SWP_NOZORDER);
  EXPECT_EQ(place(), shadowPlace({80, 90, 200, 160}, modShadow::settingsOf(shadow())));
}

TEST_F(ModShadow, HidesAndComesBackWithItsTarget) {
  ShowWindow(form.hwnd(), SW_HIDE);
  EXPECT_FALSE(IsWindowVisible(shadow()));
  ShowWindow(form.hwnd(), SW_SHOW);
  EXPECT_TRUE(IsWindowVisible(shadow()));
}

TEST_F(ModShadow, HidesWhileItsTargetIsMinimized) {
  ShowWindow(form.hwnd(), SW_MINIMIZE);
  EXPECT_FALSE(IsWindowVisible(shadow()));
  ShowWindow(form.hwnd(), SW_RESTORE);
  EXPECT_TRUE(IsWindowVisible(shadow()));
}

// Notes whenever the shadow is above a window that lies above its target.
class Watch {
 public:
  Watch(HWND watched, HWND upper) : shadow(watched), above(upper) {
    SetWindowSubclass(shadow, procedure, 1, reinterpret_cast<DWORD_PTR>(this));
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
  ~Watch() { RemoveWindowSubclass(shadow, procedure, 1); }

  [[nodiscard]] bool wasAbove() const { return isSeenAbove; }

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                    DWORD_PTR reference) {
    auto* watch = reinterpret_cast<Watch*>(reference);
    if (message == WM_WINDOWPOSCHANGED && IsWindowVisible(hwnd) != FALSE) {
      watch->isSeenAbove = watch->isSeenAbove || isBelow(watch->above, hwnd);
    }
    return DefSubclassProc(hwnd, message, wParam, lParam);
  }
  static bool isBelow(HWND lower, HWND upper) {
    for (HWND next = upper; next != nullptr; next = GetWindow(next, GW_HWNDNEXT)) {
      if (next == lower) {
        return true;
      }
    }
    return false;
  }

  HWND shadow;
  HWND above;
  bool isSeenAbove = false;
};

TEST_F(ModShadow, LiesDirectlyBelowItsTargetAndNeverOnAWindowAboveIt) {
  const fixture::Form other;
  const auto isDirectlyBelow = [this] { return GetWindow(form.hwnd(), GW_HWNDNEXT) == shadow(); };
  SetWindowPos(other.hwnd(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  const Watch watch(shadow(), other.hwnd());
  SetWindowPos(form.hwnd(), other.hwnd(), 60, 70, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
  EXPECT_TRUE(isDirectlyBelow());
  SetWindowPos(form.hwnd(), nullptr, 80, 90, 320, 240, SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_TRUE(isDirectlyBelow());
  modShadow::setSize(form.hwnd(), 10);
  modShadow::setColor(form.hwnd(), 0x808080);
  EXPECT_TRUE(isDirectlyBelow());
  ShowWindow(form.hwnd(), SW_HIDE);
  SetWindowPos(form.hwnd(), other.hwnd(), 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
  EXPECT_TRUE(IsWindowVisible(shadow()));
  EXPECT_TRUE(isDirectlyBelow());
  SetWindowPos(form.hwnd(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  EXPECT_TRUE(isDirectlyBelow());
  EXPECT_FALSE(watch.wasAbove());
  SetWindowPos(form.hwnd(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  EXPECT_TRUE(isDirectlyBelow());
}

TEST_F(ModShadow, HidesWhileTheUserWorksInAnotherProgram) {
  SendMessageW(form.hwnd(), WM_ACTIVATEAPP, FALSE, 0);
  EXPECT_FALSE(IsWindowVisible(shadow()));
  SetWindowPos(form.hwnd(), nullptr, 80, 90, 320, 240, SWP_NOZORDER | SWP_NOACTIVATE);
  modShadow::setSize(form.hwnd(), 10);
  EXPECT_FALSE(IsWindowVisible(shadow()));
  SendMessageW(form.hwnd(), WM_ACTIVATEAPP, TRUE, 0);
  EXPECT_TRUE(IsWindowVisible(shadow()));
  EXPECT_EQ(place(), shadowPlace({80, 90, 400, 330}, modShadow::settingsOf(shadow())));
}

TEST_F(ModShadow, IsDestroyedByRemovingIt) {
  HWND gone = shadow();
  modShadow::destroy(form.hwnd());
  EXPECT_EQ(shadow(), nullptr);
  EXPECT_FALSE(IsWindow(gone));
  modShadow::destroy(form.hwnd());
  modShadow::setSize(form.hwnd(), 10);
  EXPECT_EQ(shadow(), nullptr);
}

TEST_F(ModShadow, IsDestroyedWithItsTarget) {
  HWND gone = shadow();
  DestroyWindow(form.hwnd());
  EXPECT_FALSE(IsWindow(gone));
}

TEST_F(ModShadow, DrawingLeaksNoObject) {
  modShadow::setSize(form.hwnd(), 9);
  const int before = fixture::graphicsObjectsLeft();
  for (int count = 0; count < 100; ++count) {
    modShadow::setSize(form.hwnd(), 8 + count % 2);
  }
  EXPECT_EQ(fixture::graphicsObjectsLeft(), before);
}

}  // namespace
}  // namespace zelvreg::controls
