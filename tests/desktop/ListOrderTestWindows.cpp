// The results as their window shows them: sorted, and filtered.
#include "desktop/MainWindowFixture.h"
#include "scan/Findings.h"
#include "shell/StartUp.h"

// This one needs <windows.h> before it.
#include <commctrl.h>

namespace zelvreg::desktop {
namespace {

class ListOrderTest : public MainWindowTest {
 protected:
  ListOrderTest() {
    bindClicks(form);
    for (const char* text : {"b", "d", "A", "c"}) {
      form.View2.add(text);
    }
    serve();
    results = windowOf(form.View2, WC_LISTVIEWW);
  }

  void clickHeading(int column) {
    NMLISTVIEW told{};
    told.hdr = {results, 0, static_cast<UINT>(LVN_COLUMNCLICK)};
    told.iItem = -1;
    told.iSubItem = column;
    SendMessageW(GetParent(results), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&told));
    serve();
  }
  [[nodiscard]] std::wstring shown() const {
    std::wstring texts;
    for (int item = 0; item < ListView_GetItemCount(results); ++item) {
      wchar_t text[16] = {};
      ListView_GetItemText(results, item, 0, text, 16);
      texts += text;
    }
    return texts;
  }
  [[nodiscard]] bool isHighlighted(int item) const {
    return ListView_GetItemState(results, item, LVIS_SELECTED) != 0;
  }

  HWND results = nullptr;
};

TEST_F(ListOrderTest, AHeadingSortsTheWindowAndNotTheList) {
  clickHeading(0);
  EXPECT_EQ(shown(), L"Abcd");
  clickHeading(0);
  EXPECT_EQ(shown(), L"dcbA");
  EXPECT_EQ(form.View2.text(1, 0), "b");
  clickHeading(0);
  EXPECT_EQ(shown(), L"bdAc");
}

TEST_F(ListOrderTest, TheSecondOfTwoQuickClicksCounts) {
  clickHeading(0);
  NMHEADERW told{};
  told.hdr = {ListView_GetHeader(results), 0, static_cast<UINT>(HDN_ITEMDBLCLICKW)};
  SendMessageW(results, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&told));
  serve();
  EXPECT_EQ(shown(), L"dcbA");
}

TEST_F(ListOrderTest, HighlightAndFocusStayOnTheirRow) {
  ListView_SetItemState(results, 1, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  serve();
  ASSERT_TRUE(form.View2.isSelected(2));
  clickHeading(0);
  EXPECT_TRUE(isHighlighted(3));
  EXPECT_FALSE(isHighlighted(1));
  EXPECT_EQ(ListView_GetNextItem(results, -1, LVNI_FOCUSED), 3);
  EXPECT_EQ(form.View2.selectedCount(), 1U);
  EXPECT_TRUE(form.View2.isSelected(2));
}

TEST_F(ListOrderTest, WhatIsDoneToAnItemIsDoneToItsRow) {
  clickHeading(0);
  ListView_SetItemState(results, 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  serve();
  EXPECT_TRUE(form.View2.isSelected(3));
  EXPECT_EQ(form.lastClickedRow, 3U);
  SendMessageW(results, WM_KEYDOWN, VK_SPACE, 0);
  EXPECT_TRUE(form.View2.isChecked(3));
  EXPECT_EQ(ListView_GetItemState(results, 0, LVIS_STATEIMAGEMASK), INDEXTOSTATEIMAGEMASK(2));
  EXPECT_EQ(Peer::of(results)->factsOfRow(1)->name, "A");
  LVFINDINFOW search{};
  search.flags = LVFI_STRING | LVFI_PARTIAL;
  search.psz = L"D";
  EXPECT_EQ(ListView_FindItem(results, -1, &search), 3);
}

TEST_F(ListOrderTest, AFilterTakesRowsOutOfTheWindow) {
  clickHeading(0);
  form.View2.setText(3, badValueColumn, "wanted");
  form.View2.setText(2, badValueColumn, "wanted");
  HWND field = windowOf(form.FilterBox, L"Edit");
  SetWindowTextW(field, L"WANT");
  serve();
  EXPECT_EQ(form.FilterBox.text(), "WANT");
  EXPECT_EQ(shown(), L"Ad");
  EXPECT_EQ(form.FilterText.caption.get(), "2 of 4 shown");
  SetWindowTextW(field, L"");
  serve();
  EXPECT_EQ(shown(), L"Abcd");
}

TEST_F(ListOrderTest, RowsOfAScanComeAtTheEndUntilItEnds) {
  clickHeading(0);
  form.Gif89a1.visible = true;
  form.View2.add("aa");
  serve();
  EXPECT_EQ(shown(), L"Abcdaa");
  form.Gif89a1.visible = false;
  form.View2.setChecked(1, true);
  form.View2.changed(Change::Checks);
  serve();
  EXPECT_EQ(shown(), L"Aaabcd");
}

}  // namespace
}  // namespace zelvreg::desktop
