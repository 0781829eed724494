// The window exists on Windows alone.
#include "controls/modShadow.h"
#include "desktop/MainWindowFixture.h"

namespace zelvreg::desktop {
namespace {

TEST_F(MainWindowTest, EveryControlHasAWindowOfTheSystemsClass) {
  for (const ButtonPlace& place : buttonPlaces()) {
    EXPECT_NE(windowOf(place.button(form), L"Button"), nullptr) << place.button(form).caption.get();
  }
  for (const LabelPlace& place : labelPlaces()) {
    EXPECT_NE(windowOf(place.label(form), L"Static"), nullptr) << place.label(form).caption.get();
  }
  for (const ListView* list : {&form.View1, &form.View2, &form.View3, &form.View4}) {
    EXPECT_NE(windowOf(*list, WC_LISTVIEWW), nullptr);
  }
  EXPECT_NE(windowOf(form.Bar1, PROGRESS_CLASSW), nullptr);
  EXPECT_NE(windowOf(form.cboFind, L"ComboBox"), nullptr);
  EXPECT_NE(windowOf(form.cboRoot, L"ComboBox"), nullptr);
  EXPECT_NE(windowOf(form.Check1, L"Button"), nullptr);
  for (const CheckBox& box : form.SafeguardBoxes) {
    EXPECT_NE(windowOf(box, L"Button"), nullptr) << box.caption.get();
  }
}

TEST_F(MainWindowTest, AButtonShowsItsCaptionAndWhetherItIsEnabled) {
  HWND button = windowOf(form.cmd_report, L"Button");
  EXPECT_EQ(textOf(button), L"Create Report");
  EXPECT_EQ(IsWindowEnabled(button), FALSE);
  form.cmd_report.enabled = true;
  form.cmd_report.caption = "Bericht";
  EXPECT_EQ(textOf(button), L"Bericht");
  EXPECT_NE(IsWindowEnabled(button), FALSE);
}

TEST_F(MainWindowTest, CaptionsAreInTheCodePageOfTheirCharset) {
  constexpr int eastEurope = 238;
  form.cmd_start.font = Font{.name = "Segoe UI", .size = 9, .charset = eastEurope, .isBold = false};
  form.cmd_start.caption = "\x8F\xF3";
  EXPECT_EQ(textOf(windowOf(form.cmd_start, L"Button")), L"\x0179\x00F3");
}

TEST_F(MainWindowTest, AListOfAHundredThousandRowsIsAskedForRowByRow) {
  constexpr std::size_t rows = 100'000;
  for (std::size_t row = 1; row <= rows; ++row) {
    form.View2.add("row " + std::to_string(row));
  }
  form.View2.setChecked(rows, true);
  serve();
  HWND list = windowOf(form.View2, WC_LISTVIEWW);
  ASSERT_EQ(ListView_GetItemCount(list), static_cast<int>(rows));
  wchar_t text[64] = {};
  LVITEMW item{};
  item.pszText = text;
  item.cchTextMax = 64;
  SendMessageW(list, LVM_GETITEMTEXTW, rows - 1, reinterpret_cast<LPARAM>(&item));
  EXPECT_STREQ(text, L"row 100000");
  EXPECT_EQ(ListView_GetCheckState(list, static_cast<int>(rows) - 1), 1U);
  EXPECT_EQ(ListView_GetCheckState(list, 0), 0U);
  form.View2.clear();
  serve();
  EXPECT_EQ(ListView_GetItemCount(list), 0);
}

TEST_F(MainWindowTest, ANewResolutionChangesTheSizeOfEverything) {
  const RECT roomy{0, 0, 4000, 3000};
  RECT before{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &before, 0);
  RECT area = roomy;
  SystemParametersInfoW(SPI_SETWORKAREA, 0, &area, 0);
  const auto sizeOf = [](HWND hwnd) {
    RECT place{};
    GetWindowRect(hwnd, &place);
    return SIZE{place.right - place.left, place.bottom - place.top};
  };
  form.shadow.draw(0x808080, 10);
  HWND shadow = controls::modShadow::shadowOf(window.hwnd());
  constexpr UINT resolutionChanged = 0x02E0;
  for (const int resolution : {144, 192, 96}) {
    const RECT suggested{50, 60, 70, 80};
    SendMessageW(window.hwnd(), resolutionChanged, MAKEWPARAM(resolution, resolution),
                 reinterpret_cast<LPARAM>(&suggested));
    RECT place{};
    GetWindowRect(window.hwnd(), &place);
    EXPECT_EQ(place.left, 50);
    EXPECT_EQ(place.top, 60);
    EXPECT_EQ(place.right - place.left, windowWidth * resolution / 96);
    EXPECT_EQ(place.bottom - place.top, windowHeight * resolution / 96);
    EXPECT_EQ(sizeOf(windowOf(form.View1, WC_LISTVIEWW)).cx,
              sizeOf(windowOf(form.Frame1, L"ZelvregFrame")).cx);
    EXPECT_EQ(form.screen.width, MulDiv(GetSystemMetrics(SM_CXSCREEN), 1440, resolution));
    EXPECT_EQ(controls::modShadow::settingsOf(shadow).size, MulDiv(10, resolution, 96));
  }
  SystemParametersInfoW(SPI_SETWORKAREA, 0, &before, 0);
}

TEST_F(MainWindowTest, ThePartsOfTheWindowThatAreHiddenAreNotSeen) {
  HWND page = windowOf(form.Frame2, L"ZelvregFrame");
  ASSERT_NE(page, nullptr);
  EXPECT_EQ(GetWindowLongPtrW(page, GWL_STYLE) & WS_VISIBLE, 0);
  form.Frame2.visible = true;
  EXPECT_NE(GetWindowLongPtrW(page, GWL_STYLE) & WS_VISIBLE, 0);
}

TEST_F(MainWindowTest, TheQueueIsServedWhileALoopAsksForItAgainAndAgain) {
  struct Posted {
    static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR reference) {
      if (message == WM_APP) {
        ++*reinterpret_cast<int*>(reference);
      }
      if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(hwnd, procedure, id);
      }
      return DefSubclassProc(hwnd, message, wParam, lParam);
    }
  };
  int served = 0;
  SetWindowSubclass(window.hwnd(), Posted::procedure, 99, reinterpret_cast<DWORD_PTR>(&served));
  PostMessageW(window.hwnd(), WM_APP, 0, 0);
  const DWORD start = GetTickCount();
  while (served == 0 && GetTickCount() - start < 5000) {
    form.messages.doEvents();
  }
  EXPECT_EQ(served, 1);
}

TEST_F(MainWindowTest, ThePanelOfAScanTakesRoomFromTheList) {
  HWND list = windowOf(form.View1, WC_LISTVIEWW);
  RECT before{};
  GetWindowRect(list, &before);
  form.Frame8.visible = true;
  serve();
  RECT after{};
  GetWindowRect(list, &after);
  EXPECT_LT(after.bottom - after.top, before.bottom - before.top);
}

}  // namespace
}  // namespace zelvreg::desktop
