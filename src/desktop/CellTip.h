// The small window that explains the cell of a list that the mouse rests on.
#ifndef ZELVREG_DESKTOP_CELL_TIP_H
#define ZELVREG_DESKTOP_CELL_TIP_H

#include <windows.h>

// This one needs <windows.h> before it.
#include <commctrl.h>

#include <functional>
#include <string>

#include "desktop/Desk.h"

namespace zelvreg::desktop {

class CellTip {
 public:
  // The desk must outlive it. It is destroyed with the list.
  CellTip(Desk& sharedDesk, HWND shownList);

  // What it says of a cell, counted from 0; the empty text for nothing.
  std::function<std::u16string(int item, int column)> textOf;

  // The mouse is at a point of the list.
  void follow(POINT where);
  // What the list shows has changed.
  void hide() const { SendMessageW(window, TTM_POP, 0, 0); }
  // In the colors of the desk, and in a font that lives as long as the tip has no other.
  void showLook(HFONT font) const;

 private:
  Desk& desk;
  HWND list;
  HWND window = nullptr;
  int item = -1;
  int column = -1;
};

}  // namespace zelvreg::desktop

#endif
