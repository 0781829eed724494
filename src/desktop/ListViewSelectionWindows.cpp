// How the highlights of a list and those of its window follow each other.
#include <algorithm>

#include "desktop/ListViewPeer.h"

namespace zelvreg::desktop {
namespace {

// So many are taken back one by one.
constexpr std::size_t fewHighlights = 64;

}  // namespace

void ListViewPeer::itemChanged(const NMLISTVIEW& change) {
  if (isShowing || (change.uChanged & LVIF_STATE) == 0) {
    return;
  }
  const bool is = (change.uNewState & LVIS_SELECTED) != 0;
  const bool was = (change.uOldState & LVIS_SELECTED) != 0;
  if (is == was) {
    return;
  }
  if (change.iItem < 0) {
    // All of them at once.
    itemsHighlighted(0, order.count(), is);
    return;
  }
  const std::size_t row = rowOf(change.iItem);
  const auto item = static_cast<std::size_t>(change.iItem);
  itemsHighlighted(item, item, is);
  if (!is || !onItemClick) {
    return;
  }
  // Of thousands that are highlighted with one key only the first and the last one are clicked.
  if (stale.isClicked) {
    stale.lastChosen = row;
  } else {
    stale.isClicked = true;
    desk().later(this, [this] { catchUp(); });
    onItemClick(row);
  }
}

void ListViewPeer::itemsHighlighted(std::size_t firstItem, std::size_t lastItem, bool are) {
  highlighted.resize(order.count());
  isTelling = true;
  for (std::size_t item = firstItem; item < std::min(lastItem + 1, order.count()); ++item) {
    highlighted[item] = are;
    list.setSelected(order.rowAt(item), are);
  }
  isTelling = false;
  if (onSelection) {
    onSelection();
  }
}

void ListViewPeer::showSelection() {
  highlighted.resize(order.count());
  // So it is throughout a scan, in which the list grows all the time.
  if (list.selectedCount() == 0 && std::ranges::find(highlighted, true) == highlighted.end()) {
    return;
  }
  std::size_t unwanted = 0;
  for (std::size_t item = 0; item < order.count(); ++item) {
    unwanted += highlighted[item] && !list.isSelected(order.rowAt(item)) ? 1 : 0;
  }
  if (unwanted > list.selectedCount() + fewHighlights) {
    clearSelection();
  }
  for (std::size_t item = 0; item < order.count(); ++item) {
    const bool is = list.isSelected(order.rowAt(item));
    if (highlighted[item] != is) {
      highlighted[item] = is;
      ListView_SetItemState(hwnd(), static_cast<int>(item), is ? LVIS_SELECTED : 0, LVIS_SELECTED);
    }
  }
}

// To take thousands of highlights back, each with its notification, would take long. They go with
// the rows when the window is told that there are none.
void ListViewPeer::clearSelection() {
  constexpr DWORD quietly = LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL;
  const int top = ListView_GetTopIndex(hwnd());
  const int focused = ListView_GetNextItem(hwnd(), -1, LVNI_FOCUSED);
  SendMessageW(hwnd(), WM_SETREDRAW, FALSE, 0);
  ListView_SetItemCountEx(hwnd(), 0, quietly);
  ListView_SetItemCountEx(hwnd(), static_cast<int>(order.count()), quietly);
  ListView_Scroll(hwnd(), 0, (top - ListView_GetTopIndex(hwnd())) * rowPixels());
  if (focused >= 0) {
    ListView_SetItemState(hwnd(), focused, LVIS_FOCUSED, LVIS_FOCUSED);
  }
  SendMessageW(hwnd(), WM_SETREDRAW, TRUE, 0);
  highlighted.assign(order.count(), false);
}

}  // namespace zelvreg::desktop
