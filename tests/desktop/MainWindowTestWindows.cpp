// The window exists on Windows alone.
#include "desktop/MainWindow.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace zelvreg::desktop {
namespace {

struct ChildSearch {
  std::wstring windowClass;
  std::vector<HWND> found;
};

BOOL CALLBACK noteChild(HWND child, LPARAM parameter) {
  auto& search = *reinterpret_cast<ChildSearch*>(parameter);
  wchar_t name[64] = {};
  GetClassNameW(child, name, 64);
  if (search.windowClass == name) {
    search.found.push_back(child);
  }
  return TRUE;
}

class MainWindowTest : public ::testing::Test {
 protected:
  // As the program does between two turns of its loop.
  void serve() {
    // The clock of the queue may tick in steps of 16 ms.
    Sleep(60);
    form.messages.doEvents();
  }

  // The child windows of a class, hidden ones included, in the order of their making.
  std::vector<HWND> children(const std::wstring& windowClass) const {
    ChildSearch search{windowClass, {}};
    EnumChildWindows(window.hwnd(), noteChild, reinterpret_cast<LPARAM>(&search));
    return search.found;
  }

  HWND windowOf(const Control& control, const std::wstring& windowClass) const {
    for (HWND child : children(windowClass)) {
      const Peer* peer = Peer::of(child);
      if (peer != nullptr && &peer->shownControl() == &control) {
        return child;
      }
    }
    return nullptr;
  }

  static std::wstring textOf(HWND child) {
    wchar_t text[256] = {};
    GetWindowTextW(child, text, 256);
    return text;
  }

  Form42 form;
  MainWindow window{form};
};

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

TEST_F(MainWindowTest, APressRunsWhatIsBound) {
  int presses = 0;
  form.cmd_search.bind([&presses] { ++presses; });
  SendMessageW(windowOf(form.cmd_search, L"Button"), BM_CLICK, 0, 0);
  EXPECT_EQ(presses, 1);
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

TEST_F(MainWindowTest, ThePlaceOfATickTakesAPressAndTheRestOfTheRowDoesNot) {
  form.View1.add("one");
  serve();
  HWND list = windowOf(form.View1, WC_LISTVIEWW);
  RECT row{};
  ListView_GetItemRect(list, 0, &row, LVIR_BOUNDS);
  const auto press = [&](int x) {
    const LPARAM where = MAKELPARAM(x, (row.top + row.bottom) / 2);
    PostMessageW(list, WM_LBUTTONUP, 0, where);
    SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, where);
  };
  press(15);
  EXPECT_TRUE(form.View1.isChecked(1));
  press(200);
  EXPECT_TRUE(form.View1.isChecked(1));
  press(15);
  EXPECT_FALSE(form.View1.isChecked(1));
}

TEST_F(MainWindowTest, TheSpaceBarTicksTheRowWithTheFocus) {
  form.View1.add("one");
  form.View1.add("two");
  serve();
  HWND list = windowOf(form.View1, WC_LISTVIEWW);
  ListView_SetItemState(list, 1, LVIS_FOCUSED, LVIS_FOCUSED);
  SendMessageW(list, WM_KEYDOWN, VK_SPACE, 0);
  EXPECT_FALSE(form.View1.isChecked(1));
  EXPECT_TRUE(form.View1.isChecked(2));
}

TEST_F(MainWindowTest, TheSpaceBarTicksAllHighlightedRowsWithTheOneThatHasTheFocus) {
  for (const char* text : {"one", "two", "three"}) {
    form.View2.add(text);
  }
  form.View2.setChecked(1, true);
  serve();
  HWND list = windowOf(form.View2, WC_LISTVIEWW);
  ListView_SetItemState(list, 0, LVIS_SELECTED, LVIS_SELECTED);
  ListView_SetItemState(list, 2, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  SendMessageW(list, WM_KEYDOWN, VK_SPACE, 0);
  EXPECT_TRUE(form.View2.isChecked(1));
  EXPECT_FALSE(form.View2.isChecked(2));
  EXPECT_TRUE(form.View2.isChecked(3));
  SendMessageW(list, WM_KEYDOWN, VK_SPACE, 0);
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_FALSE(form.View2.isChecked(3));
}

TEST_F(MainWindowTest, AClickOnAHighlightedRowIsAClickToo) {
  form.View1.add("one");
  form.View1.add("two");
  serve();
  HWND list = windowOf(form.View1, WC_LISTVIEWW);
  const auto click = [list](int item) {
    NMITEMACTIVATE told{};
    told.hdr = {list, 0, NM_CLICK};
    told.iItem = item;
    SendMessageW(GetParent(list), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&told));
  };
  ListView_SetItemState(list, 1, LVIS_SELECTED, LVIS_SELECTED);
  EXPECT_EQ(form.lastClickedRow, 2U);
  form.lastClickedRow = 9;  // by the other list
  click(1);
  EXPECT_EQ(form.lastClickedRow, 2U);
  click(-1);
  EXPECT_EQ(form.lastClickedRow, 2U);
}

TEST_F(MainWindowTest, EnterOpensTheRowWithTheFocus) {
  form.View1.add("one");
  form.View1.add("two");
  form.View1.setText(2, 2, "5");
  serve();
  HWND list = windowOf(form.View1, WC_LISTVIEWW);
  ListView_SetItemState(list, 1, LVIS_FOCUSED, LVIS_FOCUSED);
  form.lastClickedRow = 1;
  form.Gif89a1.visible = false;
  SendMessageW(list, WM_KEYDOWN, VK_RETURN, 0);
  EXPECT_EQ(form.lastClickedRow, 2U);
  EXPECT_TRUE(form.Frame2.visible);
}

TEST_F(MainWindowTest, WhatIsDisabledOrHiddenHandsTheFocusOn) {
  ShowWindow(window.hwnd(), SW_SHOW);
  HWND start = windowOf(form.cmd_start, L"Button");
  SetFocus(start);
  ASSERT_EQ(GetFocus(), start);
  form.cmd_start.enabled = false;
  EXPECT_NE(GetFocus(), start);
  EXPECT_NE(IsWindowEnabled(GetFocus()), FALSE);
  EXPECT_NE(IsChild(window.hwnd(), GetFocus()), FALSE);
  HWND list = windowOf(form.View1, WC_LISTVIEWW);
  SetFocus(list);
  form.Frame1.visible = false;
  EXPECT_NE(GetFocus(), list);
  EXPECT_NE(IsChild(window.hwnd(), GetFocus()), FALSE);
}

TEST_F(MainWindowTest, TheFocusIsWhereItWasWhenTheUserComesBack) {
  ShowWindow(window.hwnd(), SW_SHOW);
  HWND list = windowOf(form.View1, WC_LISTVIEWW);
  SetFocus(list);
  SendMessageW(window.hwnd(), WM_ACTIVATE, WA_INACTIVE, 0);
  SetFocus(window.hwnd());
  SendMessageW(window.hwnd(), WM_ACTIVATE, WA_ACTIVE, 0);
  EXPECT_EQ(GetFocus(), list);
}

TEST_F(MainWindowTest, EnterIsTheStartOfAScanAndInTheSearchControlsThatOfASearch) {
  int scans = 0;
  int searches = 0;
  int chosen = 0;
  form.cmd_start.bind([&] { ++scans; });
  form.cmdFind.bind([&] { ++searches; });
  form.cmd_search.bind([&] { ++chosen; });
  ShowWindow(window.hwnd(), SW_SHOW);
  const auto enterIn = [&](HWND focus) {
    SetFocus(focus);
    SendMessageW(window.hwnd(), WM_COMMAND, IDOK, 0);
  };
  enterIn(windowOf(form.Check1, L"Button"));
  EXPECT_EQ(scans, 1);
  enterIn(windowOf(form.cboRoot, L"ComboBox"));
  EXPECT_EQ(searches, 1);
  enterIn(windowOf(form.cmd_search, L"Button"));
  EXPECT_EQ(chosen, 1) << "a button that has the focus takes the key";
  EXPECT_EQ(scans, 1);
}

TEST_F(MainWindowTest, ThePickerIsWorkedByItsKeys) {
  form.lbllanguage.push_back(std::make_unique<Label>("Deutsch"));
  ShowWindow(window.hwnd(), SW_SHOW);
  form.pictrlang.visible = true;
  HWND picker = windowOf(form.pictrlang, L"ZelvregFrame");
  EXPECT_EQ(GetFocus(), picker);
  EXPECT_NE(form.lbllanguage.front()->backColor, windowColor);
  SendMessageW(picker, WM_KEYDOWN, VK_DOWN, 0);
  EXPECT_EQ(form.lbllanguage.front()->backColor, windowColor);
  EXPECT_NE(form.lbllanguage.back()->backColor, windowColor);
  form.chameleonButton13.bind([this] { form.pictrlang.visible = false; });
  SendMessageW(picker, WM_KEYDOWN, VK_ESCAPE, 0);
  EXPECT_FALSE(form.pictrlang.visible);
  EXPECT_EQ(GetFocus(), windowOf(form.chameleonButton13, L"Button"));
}

TEST_F(MainWindowTest, TheHelpIsReachedByTheKeyboard) {
  std::string opened;
  form.openHelp = [&](const std::string& file, int) { opened = file; };
  HWND picture = windowOf(form.Image44[0], L"Static");
  EXPECT_NE(GetWindowLongPtrW(picture, GWL_STYLE) & WS_TABSTOP, 0);
  EXPECT_EQ(textOf(picture), L"Help");
  SendMessageW(picture, WM_KEYDOWN, VK_SPACE, 0);
  EXPECT_NE(opened.find("zelvhelp.chm"), std::string::npos);
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
  }
  SystemParametersInfoW(SPI_SETWORKAREA, 0, &before, 0);
}

TEST_F(MainWindowTest, TheHighlightIsTheSameInListAndWindow) {
  form.View2.add("one");
  form.View2.add("two");
  serve();
  HWND list = windowOf(form.View2, WC_LISTVIEWW);
  ListView_SetItemState(list, 1, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  EXPECT_TRUE(form.View2.isSelected(2));
  form.View2.setSelected(2, false);
  form.View2.setSelected(1, true);
  serve();
  EXPECT_EQ(ListView_GetItemState(list, 0, LVIS_SELECTED), static_cast<UINT>(LVIS_SELECTED));
  EXPECT_EQ(ListView_GetItemState(list, 1, LVIS_SELECTED), 0U);
}

TEST_F(MainWindowTest, ACheckBoxHandsItsNewValueOn) {
  std::string told;
  form.Check1.bind([&] { told = form.Check1.value ? "on" : "off"; });
  HWND box = windowOf(form.Check1, L"Button");
  SendMessageW(box, BM_CLICK, 0, 0);
  EXPECT_EQ(told, "on");
  EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), BST_CHECKED);
}

TEST_F(MainWindowTest, OneOptionOfTheSearchModeIsOn) {
  SendMessageW(windowOf(form.Option3, L"Button"), BM_CLICK, 0, 0);
  EXPECT_TRUE(form.Option3.value);
  SendMessageW(windowOf(form.Option2, L"Button"), BM_CLICK, 0, 0);
  EXPECT_TRUE(form.Option2.value);
  EXPECT_FALSE(form.Option3.value);
}

TEST_F(MainWindowTest, WhatIsTypedReachesTheSearch) {
  HWND combo = windowOf(form.cboFind, L"ComboBox");
  HWND edit = FindWindowExW(combo, nullptr, L"Edit", nullptr);
  ASSERT_NE(edit, nullptr);
  SendMessageW(edit, EM_SETSEL, 0, -1);
  SendMessageW(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L"abc"));
  EXPECT_EQ(form.cboFind.text(), "abc");
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
