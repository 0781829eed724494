#include "controls/TipColors.h"

// These need <windows.h> before them.
#include <commctrl.h>
#include <uxtheme.h>

#include "controls/PaintBuffer.h"
#include "libraries/SystemLibrary.h"

namespace zelvreg::controls {

void colorTip(HWND tip, Rgb ground, Rgb text) {
  if (tip == nullptr) {
    return;
  }
  // With the system's theme it would draw itself in the theme's colors.
  static const auto setTheme =
      systemFunction<decltype(SetWindowTheme)>(L"uxtheme.dll", "SetWindowTheme");
  if (setTheme != nullptr) {
    setTheme(tip, L"", L"");
  }
  SendMessageW(tip, TTM_SETTIPBKCOLOR, colorRef(ground), 0);
  SendMessageW(tip, TTM_SETTIPTEXTCOLOR, colorRef(text), 0);
}

}  // namespace zelvreg::controls
