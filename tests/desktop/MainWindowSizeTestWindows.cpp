// What the user does to the size of the window and to the columns. The window exists only on
// Windows.
#include "controls/modShadow.h"
#include "desktop/MainWindowFixture.h"
#include "desktop/WindowEdges.h"
#include "form/Form42.h"
#include "scan/Settings.h"
#include "shell/WindowEvents.h"
#include "unicode/Unicode.h"

namespace zelvreg::desktop {
namespace {

class SizeTest : public MainWindowTest {
 protected:
  SizeTest() {
    for (const char* name : {"windowleft", "windowtop", "windowwidth", "windowheight",
                             "windowmaximized", "columnsview2"}) {
      keepSetting(settings::regscan, name, "");
    }
    form.MaximizeButton.bind([this] { MaximizeButton_Click(form); });
  }

  [[nodiscard]] RECT place() const {
    RECT rectangle{};
    GetWindowRect(window.hwnd(), &rectangle);
    return rectangle;
  }
  void setSize(int width, int height) const {
    SetWindowPos(window.hwnd(), nullptr, 10, 20, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  [[nodiscard]] LRESULT hitAt(int x, int y) const {
    const RECT now = place();
    return SendMessageW(window.hwnd(), WM_NCHITTEST, 0, MAKELPARAM(now.left + x, now.top + y));
  }
  static std::string stored(const char* name) { return readSetting(settings::regscan, name); }
};

TEST_F(SizeTest, TheEdgesTheGripAndTheTitleCanBeSeized) {
  const int right = windowWidth - 1;
  const int bottom = windowHeight - 1;
  EXPECT_EQ(hitAt(0, 300), HTLEFT);
  EXPECT_EQ(hitAt(right, 300), HTRIGHT);
  EXPECT_EQ(hitAt(500, 0), HTTOP);
  EXPECT_EQ(hitAt(0, 0), HTTOPLEFT);
  EXPECT_EQ(hitAt(right, 0), HTTOPRIGHT);
  EXPECT_EQ(hitAt(500, bottom), HTBOTTOM);
  EXPECT_EQ(hitAt(0, bottom), HTBOTTOMLEFT);
  EXPECT_EQ(hitAt(right - 10, bottom - 10), HTBOTTOMRIGHT);
  EXPECT_EQ(hitAt(500, 30), HTCAPTION);
  EXPECT_EQ(hitAt(205, 300), HTCLIENT);
}

TEST_F(SizeTest, AnEdgeIsDraggedUntilItIsLetGoAndThatIsKept) {
  form.window.visible = true;
  setSize(windowWidth, windowHeight);
  const RECT before = place();
  SendMessageW(window.hwnd(), WM_NCLBUTTONDOWN, HTBOTTOM,
               MAKELPARAM(before.left + 100, before.bottom - 2));
  SetCursorPos(before.left + 130, before.bottom + 28);
  SendMessageW(window.hwnd(), WM_MOUSEMOVE, MK_LBUTTON, 0);
  SendMessageW(window.hwnd(), WM_LBUTTONUP, 0, 0);
  const RECT after = place();
  EXPECT_EQ(after.right, before.right);
  EXPECT_EQ(after.bottom, before.bottom + 30);
  EXPECT_EQ(stored("windowheight"), std::to_string(windowHeight + 30));
  EXPECT_EQ(stored("windowmaximized"), "0");
  SendMessageW(window.hwnd(), WM_MOUSEMOVE, 0, 0);
  EXPECT_EQ(place().bottom, after.bottom) << "it was let go";
}

TEST_F(SizeTest, WhatIsInAWindowFollowsItsSize) {
  setSize(windowWidth + 200, windowHeight + 100);
  EXPECT_EQ(form.window.width, (windowWidth + 200) * twipsPerPixel);
  RECT page{};
  RECT list{};
  GetWindowRect(windowOf(form.Frame1, L"ZelvregFrame"), &page);
  GetWindowRect(windowOf(form.View1, WC_LISTVIEWW), &list);
  EXPECT_EQ(page.right - page.left, 790 + 200);
  EXPECT_EQ(list.right, page.right);
  EXPECT_EQ(list.bottom, page.bottom);
  EXPECT_EQ(page.bottom - page.top, 450 + 100);
  EXPECT_EQ(form.chameleonButton10.top, (546 + 100) * twipsPerPixel)
      << "at the end of the side bar";
  EXPECT_EQ(form.chameleonButton12.left + form.chameleonButton12.width,
            (776 + 200) * twipsPerPixel);
}

TEST_F(SizeTest, TheWindowAsksForAtLeastItsSmallestSize) {
  MINMAXINFO limits{};
  SendMessageW(window.hwnd(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  EXPECT_EQ(limits.ptMinTrackSize.x, windowWidth);
  EXPECT_EQ(limits.ptMinTrackSize.y, windowHeight);
}

TEST_F(SizeTest, ADoubleClickOnTheTitleMaximizesAndRestores) {
  form.window.visible = true;
  setSize(windowWidth, windowHeight);
  form.shadow.draw(0x808080, 10);
  const RECT before = place();
  SendMessageW(window.hwnd(), WM_NCLBUTTONDBLCLK, HTCAPTION, 0);
  EXPECT_NE(IsZoomed(window.hwnd()), FALSE);
  EXPECT_EQ(form.window.windowState, WindowState::Maximized);
  EXPECT_EQ(controls::modShadow::shadowOf(window.hwnd()), nullptr);
  EXPECT_EQ(hitAt(0, 300), HTCLIENT) << "it has no edges then";
  EXPECT_EQ(stored("windowmaximized"), "1");
  EXPECT_EQ(stored("windowwidth"), std::to_string(windowWidth)) << "the size to go back to";
  serve();
  EXPECT_EQ(form.MaximizeButton.toolTip.get(), "Restore the size");
  SendMessageW(window.hwnd(), WM_NCLBUTTONDBLCLK, HTCAPTION, 0);
  EXPECT_EQ(IsZoomed(window.hwnd()), FALSE);
  EXPECT_EQ(form.window.windowState, WindowState::Normal);
  EXPECT_NE(controls::modShadow::shadowOf(window.hwnd()), nullptr);
  const RECT after = place();
  EXPECT_NE(EqualRect(&after, &before), FALSE);
}

TEST_F(SizeTest, TheWindowOpensWhereItWasButNeverOffTheScreenNorTooSmall) {
  keepWindowMemory({.left = -90'000, .top = 90'000, .width = 100, .height = 100});
  form.window.visible = true;
  const RECT now = place();
  EXPECT_GE(now.left, 0);
  EXPECT_GE(now.top, 0);
  EXPECT_LT(now.top, GetSystemMetrics(SM_CYSCREEN));
  EXPECT_EQ(now.right - now.left, windowWidth);
  EXPECT_EQ(now.bottom - now.top, windowHeight);
}

class ColumnTest : public SizeTest {
 protected:
  ColumnTest() {
    form.Frame1.visible = false;
    form.Frame2.visible = true;
    list = windowOf(form.View2, WC_LISTVIEWW);
    header = ListView_GetHeader(list);
  }

  [[nodiscard]] int widthOf(int column) const { return ListView_GetColumnWidth(list, column); }
  LRESULT tell(UINT code, int column, int width = 0) {
    HDITEMW item{};
    item.mask = HDI_WIDTH;
    item.cxy = width;
    NMHEADERW told{};
    told.hdr = {header, 0, code};
    told.iItem = column;
    told.pitem = &item;
    const LRESULT answer = SendMessageW(list, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&told));
    serve();
    return answer;
  }

  HWND list = nullptr;
  HWND header = nullptr;
};

TEST_F(ColumnTest, ADraggedColumnKeepsItsWidthAndTheLastTakesWhatIsLeft) {
  const int last = widthOf(4);
  tell(HDN_BEGINTRACKW, 0);
  tell(HDN_ENDTRACKW, 0, 200);
  EXPECT_EQ(widthOf(0), 200);
  EXPECT_EQ(widthOf(4), last + 74);
  EXPECT_EQ(stored("columnsview2"), "200 164 0 154 0");
  setSize(windowWidth + 100, windowHeight);
  EXPECT_EQ(widthOf(0), 200);
  EXPECT_EQ(widthOf(4), last + 74 + 100);
  tell(HDN_ENDTRACKW, 4, 90);
  setSize(windowWidth + 200, windowHeight);
  EXPECT_EQ(widthOf(4), 90) << "it is the user's now";
}

TEST_F(ColumnTest, AColumnIsNeverDraggedAwayAndAHiddenOneStaysHidden) {
  tell(HDN_ENDTRACKW, 1, 2);
  EXPECT_EQ(widthOf(1), 24);
  EXPECT_EQ(tell(HDN_BEGINTRACKW, 2), TRUE) << "refused";
  tell(HDN_DIVIDERDBLCLICKW, 2);
  EXPECT_EQ(widthOf(2), 0);
}

TEST_F(ColumnTest, ADoubleClickOnTheDividerFitsTheLongestTextWhereverItIs) {
  for (int row = 0; row < 500; ++row) {
    form.View2.add("short");
  }
  const std::string path = "C:\\Program Files\\Northwind\\a longer name than all the others.dll";
  form.View2.add(path);
  serve();
  const auto* peer = dynamic_cast<const ListViewPeer*>(Peer::of(list));
  EXPECT_NE(peer->tipText(500, 0), u"") << "it is cut";
  tell(HDN_DIVIDERDBLCLICKW, 0);
  EXPECT_EQ(peer->tipText(500, 0), u"");
  EXPECT_GT(widthOf(0), 274);
  tell(HDN_ENDTRACKW, 0, 200);
  EXPECT_EQ(utf8(peer->tipText(500, 0)), path);
  EXPECT_EQ(peer->tipText(0, 0), u"");
}

}  // namespace
}  // namespace zelvreg::desktop
