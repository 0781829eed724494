// Mouse and keyboard in the window, which exists only on Windows.
#include "desktop/MainWindowFixture.h"
#include "form/Form42.h"

namespace zelvreg::desktop {
namespace {

TEST_F(MainWindowTest, APressRunsWhatIsBound) {
  int presses = 0;
  form.cmd_search.bind([&presses] { ++presses; });
  SendMessageW(windowOf(form.cmd_search, L"Button"), BM_CLICK, 0, 0);
  EXPECT_EQ(presses, 1);
}

TEST_F(MainWindowTest, APressOnTheTickChangesItAndOnTheRestOfTheRowDoesNot) {
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

TEST_F(MainWindowTest, AControlThatIsDisabledOrHiddenPassesTheFocusOn) {
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

TEST_F(MainWindowTest, EnterStartsAScanAndInTheSearchControlsASearch) {
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
  enterIn(FindWindowExW(windowOf(form.cboFind, L"ComboBox"), nullptr, L"Edit", nullptr));
  EXPECT_EQ(searches, 2) << "where the text is typed";
  EXPECT_EQ(scans, 1);
  enterIn(windowOf(form.cmd_search, L"Button"));
  EXPECT_EQ(chosen, 1) << "a button that has the focus takes the key";
  EXPECT_EQ(scans, 1);
}

TEST_F(MainWindowTest, ThePickerCanBeUsedByTheKeyboard) {
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

TEST_F(MainWindowTest, F1InAnyControlOpensTheHelpOfItsPage) {
  std::vector<int> opened;
  form.openHelp = [&](const std::string&, int context) { opened.push_back(context); };
  const auto pressF1 = [](HWND control) { SendMessageW(control, pressedF1, 0, 0); };
  pressF1(window.hwnd());
  pressF1(windowOf(form.View1, WC_LISTVIEWW));
  pressF1(windowOf(form.cmd_start, L"Button"));
  pressF1(windowOf(form.ChKeys, L"Button"));
  pressF1(windowOf(form.cboRoot, WC_COMBOBOXW));
  EXPECT_EQ(opened, std::vector<int>(5, HelpTopic("options").page().context));
  opened.clear();
  form.Frame1.visible = false;
  form.Frame2.visible = true;
  pressF1(windowOf(form.View2, WC_LISTVIEWW));
  pressF1(windowOf(form.FilterBox, L"Edit"));
  EXPECT_EQ(opened, std::vector<int>(2, HelpTopic("results").page().context));
}

TEST_F(MainWindowTest, WithoutABookAndItsPagesAMessageSaysSo) {
  std::string told;
  form.dialogs.show = [&told](const UserMessage& message) {
    told = message.text;
    return Answer::Ok;
  };
  form.programFolder = R"(C:\nowhere)";
  openHelp(form, "start");
  EXPECT_EQ(told, zelvreg::textOf(form, "help-missing", {R"(C:\nowhere\manual\en\start.html)"}));
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

TEST_F(MainWindowTest, ACheckBoxPassesItsNewValueOn) {
  std::string told;
  form.Check1.bind([&] { told = form.Check1.value ? "on" : "off"; });
  HWND box = windowOf(form.Check1, L"Button");
  SendMessageW(box, BM_CLICK, 0, 0);
  EXPECT_EQ(told, "on");
  EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), BST_CHECKED);
}

TEST_F(MainWindowTest, OnlyOneOptionOfTheSearchModeIsOn) {
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

TEST_F(MainWindowTest, TextOfAnyScriptCanBeTyped) {
  HWND combo = windowOf(form.cboFind, L"ComboBox");
  HWND edit = FindWindowExW(combo, nullptr, L"Edit", nullptr);
  ASSERT_NE(edit, nullptr);
  SendMessageW(edit, EM_SETSEL, 0, -1);
  SendMessageW(edit, EM_REPLACESEL, FALSE,
               reinterpret_cast<LPARAM>(L"\u0418\u0432\u0430\u043D \u8868"));
  for (const wchar_t unit : {L'\\', L'\xD83D', L'\xDE00'}) {
    SendMessageW(edit, WM_CHAR, unit, 1);
  }
  EXPECT_EQ(form.cboFind.text(), "\xD0\x98\xD0\xB2\xD0\xB0\xD0\xBD \xE8\xA1\xA8\\\xF0\x9F\x98\x80");
}

TEST_F(MainWindowTest, ALetterThatIsTypedFindsTheRowThatBeginsWithIt) {
  // Latin, Cyrillic in capitals and not, Japanese.
  for (const char* text : {"app", "\xD0\x98\xD0\xB2\xD0\xB0\xD0\xBD", "\xE8\xA1\xA8\xE8\xA8\x88",
                           "\xD0\xB8\xD0\xB2\xD1\x8B", "apple"}) {
    form.View3.add(text);
  }
  serve();
  HWND list = windowOf(form.View3, WC_LISTVIEWW);
  const auto find = [list](const wchar_t* text, UINT flags, int after = -1) {
    LVFINDINFOW wanted{};
    wanted.flags = flags;
    wanted.psz = text;
    return SendMessageW(list, LVM_FINDITEMW, static_cast<WPARAM>(after),
                        reinterpret_cast<LPARAM>(&wanted));
  };
  EXPECT_EQ(find(L"\u8868", LVFI_PARTIAL), 2);
  EXPECT_EQ(find(L"\u0438\u0412", LVFI_PARTIAL), 1) << "in another case";
  EXPECT_EQ(find(L"\u0438\u0432\u044B", LVFI_PARTIAL), 3);
  EXPECT_EQ(find(L"APPL", LVFI_PARTIAL), 4);
  EXPECT_EQ(find(L"apple", LVFI_STRING), 4);
  EXPECT_EQ(find(L"appl", LVFI_STRING), -1);
  EXPECT_EQ(find(L"b", LVFI_PARTIAL | LVFI_WRAP), -1);
  SendMessageW(list, WM_CHAR, L'\u0438', 1);
  EXPECT_EQ(form.View3.selectedRow(), 2U);
}

}  // namespace
}  // namespace zelvreg::desktop
