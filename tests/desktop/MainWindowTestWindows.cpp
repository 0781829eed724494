// The window exists only on Windows.
#include <cwchar>

#include "controls/modShadow.h"
#include "desktop/MainWindowFixture.h"
#include "desktop/SystemScreen.h"
#include "form/Form42.h"

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
  EXPECT_NE(windowOf(form.CarefulBox, L"Button"), nullptr);
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

// A path in three scripts with a character outside the first plane.
constexpr const wchar_t* mixedPath =
    L"C:\\\u0418\u0432\u0430\u043D\\\u8868\u30BD\\\u05D0\U0001F600";
const std::string mixedText =
    "C:\\\xD0\x98\xD0\xB2\xD0\xB0\xD0\xBD\\\xE8\xA1\xA8\xE3\x82\xBD\\\xD7\x90\xF0\x9F\x98\x80";

TEST_F(MainWindowTest, CaptionsAreOfAnyScriptWhateverTheCharsetOfTheirFont) {
  constexpr int eastEurope = 238;
  const Font font{.name = "Segoe UI", .size = 9, .charset = eastEurope, .isBold = false};
  form.cmd_start.font = font;
  form.cmd_start.caption = mixedText;
  EXPECT_EQ(textOf(windowOf(form.cmd_start, L"Button")), mixedPath);
  form.ChCase.font = font;
  form.ChCase.caption = mixedText;
  EXPECT_EQ(textOf(windowOf(form.ChCase, L"Button")), mixedPath);
  form.Frame1.caption = mixedText;
  EXPECT_EQ(textOf(windowOf(form.Frame1, L"ZelvregFrame")), mixedPath);
  form.cboFind.setText(mixedText);
  EXPECT_EQ(textOf(windowOf(form.cboFind, L"ComboBox")), mixedPath);
  // A label gets the text for screen readers when it is drawn.
  HWND label = windowOf(form.Label10, L"Static");
  form.Label10.caption = mixedText;
  form.Frame2.visible = true;
  ShowWindow(window.hwnd(), SW_SHOW);
  RedrawWindow(label, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  EXPECT_EQ(textOf(label), mixedPath);
}

TEST_F(MainWindowTest, AListShowsTextsOfAnyScript) {
  form.View2.setColumnHeader(1, mixedText);
  form.View2.add("\xED\xA0\x80 lone");
  form.View2.setText(1, 1, mixedText);
  serve();
  HWND list = windowOf(form.View2, WC_LISTVIEWW);
  const auto cell = [list](int column, int room) {
    wchar_t text[64] = {};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = room;
    SendMessageW(list, LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item));
    return std::wstring(text);
  };
  EXPECT_EQ(cell(0, 64), L"\xD800 lone");
  EXPECT_EQ(cell(1, 64), mixedPath);
  const int all = static_cast<int>(std::wcslen(mixedPath));
  EXPECT_EQ(cell(1, all + 1), mixedPath);
  EXPECT_EQ(cell(1, all), std::wstring(mixedPath, static_cast<std::size_t>(all) - 2))
      << "no pair is cut in half";
  wchar_t heading[64] = {};
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT;
  column.pszText = heading;
  column.cchTextMax = 64;
  SendMessageW(list, LVM_GETCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
  EXPECT_STREQ(heading, mixedPath);
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
  // What 120 makes of a length is rounded, and is not taken along.
  for (const int resolution : {120, 144, 192, 288, 96}) {
    const RECT suggested{50, 60, 70, 80};
    SendMessageW(window.hwnd(), resolutionChanged, MAKEWPARAM(resolution, resolution),
                 reinterpret_cast<LPARAM>(&suggested));
    RECT place{};
    GetWindowRect(window.hwnd(), &place);
    EXPECT_EQ(place.left, 50);
    EXPECT_EQ(place.top, 60);
    EXPECT_EQ(place.right - place.left, MulDiv(windowWidth, resolution, 96));
    EXPECT_EQ(place.bottom - place.top, MulDiv(windowHeight, resolution, 96));
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

TEST_F(MainWindowTest, ANewColorOfTheLineBelowTheTitleDrawsNoControlAgain) {
  ShowWindow(window.hwnd(), SW_SHOW);
  serve();
  HWND start = windowOf(form.cmd_start, L"Button");
  ASSERT_EQ(GetUpdateRect(start, nullptr, FALSE), FALSE);
  form.Shape1.foreColor = 192;
  RECT changed{};
  EXPECT_NE(GetUpdateRect(window.hwnd(), &changed, FALSE), FALSE);
  EXPECT_EQ(changed.bottom, window.sharedDesk().pixels(titleHeight));
  EXPECT_EQ(GetUpdateRect(start, nullptr, FALSE), FALSE);
  form.Shape3.foreColor = 192;
  EXPECT_NE(GetUpdateRect(start, nullptr, FALSE), FALSE) << "the accent is everywhere";
}

TEST_F(MainWindowTest, TheListMakesRoomForThePanelOfAScan) {
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
