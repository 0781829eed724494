// What the mouse and the keys do in a list.
#include <algorithm>

#include "desktop/ListViewPeer.h"

namespace zelvreg::desktop {
namespace {

// Case is ignored, as in names of the system.
bool isSame(std::u16string_view first, std::u16string_view second) {
  const auto call = [](std::u16string_view text) { return reinterpret_cast<LPCWSTR>(text.data()); };
  return CompareStringOrdinal(call(first), static_cast<int>(first.size()), call(second),
                              static_cast<int>(second.size()), TRUE) == CSTR_EQUAL;
}

}  // namespace

// The row whose text begins with the letters that the user has typed, or is the whole text that
// another program looks for; -1 for none. In a virtual list the control cannot search by itself.
LRESULT ListViewPeer::findItem(const NMLVFINDITEMW& search) const {
  if ((search.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0) {
    return -1;
  }
  const bool isHeadEnough = (search.lvfi.flags & LVFI_PARTIAL) != 0;
  const std::u16string_view wanted(reinterpret_cast<const char16_t*>(search.lvfi.psz));
  const auto count = static_cast<int>(order.count());
  const int start = std::max(0, search.iStart);
  const int end = (search.lvfi.flags & LVFI_WRAP) != 0 ? start + count : count;
  for (int item = start; item < end; ++item) {
    const std::u16string text = utf16(list.text(rowOf(item % count), 0));
    const std::u16string_view shown(text);
    if (isSame(isHeadEnough ? shown.substr(0, wanted.size()) : shown, wanted)) {
      return item % count;
    }
  }
  return -1;
}

// Also a click on a row that is already highlighted.
void ListViewPeer::clicked(int item) {
  if (onItemClick && item >= 0) {
    onItemClick(rowOf(item));
  }
}

void ListViewPeer::doubleClicked(int item) {
  clicked(item);
  if (onDoubleClick && item >= 0) {
    onDoubleClick();
  }
}

void ListViewPeer::toggle(std::size_t row) { list.setChecked(row, !list.isChecked(row)); }

// Changes the tick of the row with the focus. If that row is highlighted, all highlighted rows get
// the same tick.
void ListViewPeer::toggleFocused() {
  const std::size_t row = focusedRow();
  if (row == 0) {
    return;
  }
  toggle(row);
  for (std::size_t other = 1; list.isSelected(row) && other <= list.count(); ++other) {
    if (list.isSelected(other)) {
      list.setChecked(other, list.isChecked(row));
    }
  }
}

// Whether the key was used.
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
  const bool isControl = GetKeyState(VK_CONTROL) < 0;
  if (options.canBeSorted && isControl && key >= '1' && key <= '9') {
    sortByShownColumn(key - '0');
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
  POINT place{row.left + desk().pixels(40), row.bottom};
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
  toggle(rowOf(item));
  return true;
}

}  // namespace zelvreg::desktop
