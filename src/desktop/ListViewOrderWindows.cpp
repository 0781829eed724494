// The order in which a list is shown, and what the user does with it.
#include <algorithm>

#include "desktop/ListViewPeer.h"
#include "text/Text.h"

namespace zelvreg::desktop {
namespace {

// About 3 milliseconds.
constexpr std::size_t stepsAtOnce = 20000;

}  // namespace

std::size_t ListViewPeer::rowOf(int item) const {
  return item < 0 ? 0 : order.rowAt(static_cast<std::size_t>(item));
}

int ListViewPeer::itemOf(std::size_t row) const {
  const auto item = order.itemOf(row);
  return item ? static_cast<int>(*item) : -1;
}

std::size_t ListViewPeer::focusedRow() const {
  return rowOf(ListView_GetNextItem(hwnd(), -1, LVNI_FOCUSED));
}

void ListViewPeer::sortByColumn(std::size_t column) {
  order.click(column);
  InvalidateRect(header, nullptr, FALSE);
  desk().later(this, [this] { catchUp(); });
}

// By the position of a column among those that are seen, from 1.
void ListViewPeer::sortByShownColumn(std::size_t position) {
  for (std::size_t column = 0; column < options.columnWidths.size(); ++column) {
    position -= options.columnWidths[column] > 0 ? 1 : 0;
    if (position == 0) {
      sortByColumn(column);
      return;
    }
  }
}

// While isShowing is set, because it changes what the window has highlighted.
void ListViewPeer::followRows() {
  constexpr DWORD quietly = LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL;
  const bool wasOwn = order.isOwn();
  const std::size_t focused = focusedRow();
  order.follow(list);
  ListView_SetItemCountEx(hwnd(), static_cast<int>(order.count()), quietly);
  if (!wasOwn || !order.isOwn()) {
    showOrder(focused);
  }
  if (order.isOwn() != wasOwn) {
    ListView_EnsureVisible(hwnd(), std::max(0, itemOf(focused)), FALSE);
  }
}

// Rows that come during a scan are at the end until it is over.
void ListViewPeer::continueSorting() {
  if (!order.isUnsorted() || (isGrowing && isGrowing())) {
    return;
  }
  const std::size_t column = order.sorting() ? order.sorting()->column : 0;
  const std::size_t focused = focusedRow();
  const bool isDone = order.sort(stepsAtOnce, list, [this, column](std::size_t row) {
    return lowerCase(cellText(row, column));
  });
  if (isDone) {
    showOrder(focused);
    ListView_EnsureVisible(hwnd(), std::max(0, itemOf(focused)), FALSE);
  } else {
    desk().later(this, [this] { catchUp(); });
  }
}

// Highlights and focus stay on their rows.
void ListViewPeer::showOrder(std::size_t focused) {
  if (focused == 0 && list.selectedCount() == 0 &&
      std::ranges::find(highlighted, true) == highlighted.end()) {
    repaint();
    return;
  }
  clearSelection();
  showSelection();
  ListView_SetItemState(hwnd(), -1, 0, LVIS_FOCUSED);
  if (const int item = itemOf(focused); item >= 0) {
    ListView_SetItemState(hwnd(), item, LVIS_FOCUSED, LVIS_FOCUSED);
  }
  repaint();
}

}  // namespace zelvreg::desktop
