// What the mouse and the keys do in a list.
#include "desktop/ListViewPeer.h"

namespace zelvreg::desktop {

void ListViewPeer::itemChanged(const NMLISTVIEW& change) {
  if (isShowing || (change.uChanged & LVIF_STATE) == 0) {
    return;
  }
  const bool is = (change.uNewState & LVIS_SELECTED) != 0;
  const bool was = (change.uOldState & LVIS_SELECTED) != 0;
  if (change.iItem < 0) {
    // All of them at once.
    for (std::size_t row = 1; is != was && row <= list.count(); ++row) {
      list.setSelected(row, is);
    }
    return;
  }
  const std::size_t row = static_cast<std::size_t>(change.iItem) + 1;
  if (is != was) {
    list.setSelected(row, is);
  }
  if (is && !was && onItemClick) {
    onItemClick(row);
  }
}

// Also a click on a row that is highlighted already.
void ListViewPeer::clicked(int item) {
  if (onItemClick && item >= 0) {
    onItemClick(static_cast<std::size_t>(item) + 1);
  }
}

void ListViewPeer::doubleClicked(int item) {
  clicked(item);
  if (onDoubleClick && item >= 0) {
    onDoubleClick();
  }
}

void ListViewPeer::toggle(std::size_t row) { list.setChecked(row, !list.isChecked(row)); }

// Ticks all highlighted rows with the one that has the focus, as far as it is one of them.
void ListViewPeer::toggleFocused() {
  const int focused = ListView_GetNextItem(hwnd(), -1, LVNI_FOCUSED);
  if (focused < 0) {
    return;
  }
  const std::size_t row = static_cast<std::size_t>(focused) + 1;
  toggle(row);
  for (std::size_t other = 1; list.isSelected(row) && other <= list.count(); ++other) {
    if (list.isSelected(other)) {
      list.setChecked(other, list.isChecked(row));
    }
  }
}

// Whether the key meant something.
bool ListViewPeer::keyPressed(WPARAM key) {
  if (key == VK_SPACE && options.hasChecks) {
    toggleFocused();
    return true;
  }
  if (key == VK_RETURN) {
    const int focused = ListView_GetNextItem(hwnd(), -1, LVNI_FOCUSED);
    if (focused >= 0) {
      ListView_SetItemState(hwnd(), focused, LVIS_SELECTED, LVIS_SELECTED);
      doubleClicked(focused);
    }
    return true;
  }
  return false;
}

void ListViewPeer::menuOfKeyboard() const {
  RECT row{};
  const int focused = ListView_GetNextItem(hwnd(), -1, LVNI_FOCUSED);
  if (!onMenu || focused < 0 || ListView_GetItemRect(hwnd(), focused, &row, LVIR_BOUNDS) == FALSE) {
    return;
  }
  POINT place{row.left + desk().points(40), row.bottom};
  ClientToScreen(hwnd(), &place);
  onMenu(place);
}

// Whether the press was on a tick.
bool ListViewPeer::pressed(POINT where) {
  LVHITTESTINFO hit{};
  hit.pt = where;
  const int item = ListView_SubItemHitTest(hwnd(), &hit);
  RECT bounds{};
  if (item < 0 || ListView_GetItemRect(hwnd(), item, &bounds, LVIR_BOUNDS) == FALSE ||
      where.x - bounds.left >= checkRight()) {
    return false;
  }
  SetFocus(hwnd());
  toggle(static_cast<std::size_t>(item) + 1);
  return true;
}

}  // namespace zelvreg::desktop
