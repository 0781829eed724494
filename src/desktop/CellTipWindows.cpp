#include "controls/TipColors.h"
#include "desktop/CellTip.h"
#include "text/Wide.h"

namespace zelvreg::desktop {
namespace {

constexpr UINT_PTR toolId = 1;

TOOLINFOW toolOf(HWND list) {
  TOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.hwnd = list;
  tool.uId = toolId;
  return tool;
}

RECT cellPlace(HWND list, int item, int column) {
  RECT place{};
  place.left = LVIR_BOUNDS;
  place.top = column;
  SendMessageW(list, LVM_GETSUBITEMRECT, static_cast<WPARAM>(item),
               reinterpret_cast<LPARAM>(&place));
  return place;
}

}  // namespace

CellTip::CellTip(Desk& sharedDesk, HWND shownList) : desk(sharedDesk), list(shownList) {
  window = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                           WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, list, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
  TOOLINFOW tool = toolOf(list);
  tool.uFlags = TTF_SUBCLASS;
  std::u16string nothing;
  tool.lpszText = roomIn(nothing);
  SendMessageW(window, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  // Only with a width it shows more than one line.
  constexpr LPARAM anyWidth = 10'000;
  SendMessageW(window, TTM_SETMAXTIPWIDTH, 0, anyWidth);
  constexpr LPARAM longEnough = 30'000;  // milliseconds to read it
  SendMessageW(window, TTM_SETDELAYTIME, TTDT_AUTOPOP, longEnough);
}

void CellTip::follow(POINT where) {
  LVHITTESTINFO hit{};
  hit.pt = where;
  SendMessageW(list, LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit));
  if (hit.iItem == item && hit.iSubItem == column) {
    return;
  }
  item = hit.iItem;
  column = hit.iSubItem;
  hide();
  TOOLINFOW tool = toolOf(list);
  if (item >= 0) {
    tool.rect = cellPlace(list, item, column);
    if (column == 0) {
      // The system counts the whole row to its first cell.
      tool.rect.right =
          tool.rect.left + static_cast<LONG>(SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0));
    }
  }
  SendMessageW(window, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
  std::u16string text = item >= 0 && textOf ? textOf(item, column) : std::u16string();
  tool.lpszText = roomIn(text);
  SendMessageW(window, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
  // The tip may have seen this move before it knew of the cell, and the mouse may rest from here
  // on.
  MSG move{};
  move.hwnd = list;
  move.message = WM_MOUSEMOVE;
  move.lParam = MAKELPARAM(where.x, where.y);
  SendMessageW(window, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&move));
}

void CellTip::showLook(HFONT font) const {
  SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  controls::colorTip(window, desk.color(Tone::Surface), desk.color(Tone::Text));
}

}  // namespace zelvreg::desktop
