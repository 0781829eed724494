// The highlights of a list with many rows, which the list and its window both know.
#include <string>

#include "desktop/MainWindowFixture.h"
#include "scan/Findings.h"

// This one needs <windows.h> before it.
#include <commctrl.h>

namespace zelvreg::desktop {
namespace {

class ListSelectionTest : public MainWindowTest {
 protected:
  ListSelectionTest() {
    for (int row = 1; row <= count; ++row) {
      form.View2.add("row " + std::to_string(row));
    }
    serve();
    results = windowOf(form.View2, WC_LISTVIEWW);
  }

  void highlight(int from, int to) const {
    for (int row = from; row <= to; ++row) {
      ListView_SetItemState(results, row - 1, LVIS_SELECTED, LVIS_SELECTED);
    }
  }
  [[nodiscard]] std::vector<int> highlightsOfWindow() const {
    std::vector<int> rows;
    for (int item = 0; item < ListView_GetItemCount(results); ++item) {
      if (ListView_GetItemState(results, item, LVIS_SELECTED) != 0) {
        rows.push_back(item + 1);
      }
    }
    return rows;
  }

  static constexpr int count = 1000;
  HWND results = nullptr;
};

TEST_F(ListSelectionTest, WhatIsHighlightedInTheWindowIsSoInTheListAndTheOtherWayRound) {
  highlight(3, 102);
  serve();
  EXPECT_EQ(highlightsOfWindow().size(), 100U);
  EXPECT_TRUE(form.View2.isSelected(3) && form.View2.isSelected(102));
  EXPECT_FALSE(form.View2.isSelected(2) || form.View2.isSelected(103));
  form.View2.setSelected(50, false);
  form.View2.setSelected(900, true);
  serve();
  EXPECT_EQ(highlightsOfWindow().size(), 100U);
  form.View2.select(7);
  serve();
  EXPECT_EQ(highlightsOfWindow(), std::vector<int>{7});
}

TEST_F(ListSelectionTest, ManyHighlightsThatGoTakeNothingElseAlong) {
  highlight(101, 600);
  ListView_SetItemState(results, 699, LVIS_FOCUSED, LVIS_FOCUSED);
  ListView_EnsureVisible(results, 699, FALSE);
  const int top = ListView_GetTopIndex(results);
  const auto isVisible = [this] { return GetWindowLongPtrW(results, GWL_STYLE) & WS_VISIBLE; };
  const auto wasVisible = isVisible();
  chameleonButton17_Click(form);
  serve();
  EXPECT_EQ(highlightsOfWindow(), std::vector<int>());
  EXPECT_EQ(ListView_GetNextItem(results, -1, LVNI_FOCUSED), 699);
  EXPECT_EQ(ListView_GetTopIndex(results), top);
  EXPECT_EQ(ListView_GetItemCount(results), count);
  EXPECT_EQ(isVisible(), wasVisible);
}

TEST_F(ListSelectionTest, RowsThatLeaveTheListTakeTheirHighlightsAlong) {
  highlight(2, 300);
  form.View2.removeWhere([this](std::size_t row) { return form.View2.isSelected(row); });
  serve();
  EXPECT_EQ(ListView_GetItemCount(results), count - 299);
  EXPECT_EQ(highlightsOfWindow(), std::vector<int>());
  highlight(2, 2);
  serve();
  EXPECT_TRUE(form.View2.isSelected(2));
  EXPECT_EQ(form.View2.text(2, 0), "row 301");
}

TEST_F(ListSelectionTest, OfManyRowsThatOneKeyHighlightsTheFirstAndTheLastAreClicked) {
  highlight(5, 9);
  EXPECT_EQ(form.lastClickedRow, 5U);
  serve();
  EXPECT_EQ(form.lastClickedRow, 9U);
  highlight(20, 20);
  EXPECT_EQ(form.lastClickedRow, 20U);
}

TEST_F(ListSelectionTest, PaintingTheWindowLeavesTheListToTheQueue) {
  form.Frame1.visible = false;
  form.Frame2.visible = true;
  ShowWindow(window.hwnd(), SW_SHOW);
  serve();
  ASSERT_EQ(GetUpdateRect(results, nullptr, FALSE), FALSE);
  RedrawWindow(window.hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_NOCHILDREN);
  EXPECT_NE(GetUpdateRect(results, nullptr, FALSE), FALSE);
  serve();
  EXPECT_EQ(GetUpdateRect(results, nullptr, FALSE), FALSE);
}

}  // namespace
}  // namespace zelvreg::desktop
