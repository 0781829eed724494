// The window exists on Windows alone.
#include "desktop/MainWindow.h"

#include <gtest/gtest.h>

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
