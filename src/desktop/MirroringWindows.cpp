#include "desktop/Mirroring.h"

// This one needs <windows.h> before it.
#include <commctrl.h>

#include <cwchar>

namespace zelvreg::desktop {
namespace {

bool isOfClass(HWND window, const wchar_t* windowClass) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, static_cast<int>(std::size(name)));
  return _wcsicmp(name, windowClass) == 0;
}

void layOutFrom(HWND window, bool isRight) {
  const LONG_PTR style = GetWindowLongPtrW(window, GWL_EXSTYLE);
  const LONG_PTR wanted = isRight ? style | WS_EX_LAYOUTRTL : style & ~WS_EX_LAYOUTRTL;
  if (wanted == style) {
    return;
  }
  SetWindowLongPtrW(window, GWL_EXSTYLE, wanted);
  // Its scroll bar changes sides.
  SetWindowPos(window, nullptr, 0, 0, 0, 0,
               SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  if (isOfClass(window, WC_LISTVIEWW)) {
    // Rows are drawn through a buffer of their own, and the one of the class would turn them again.
    ListView_SetExtendedListViewStyleEx(window, LVS_EX_DOUBLEBUFFER,
                                        isRight ? 0 : LVS_EX_DOUBLEBUFFER);
  }
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  if (isOfClass(window, WC_COMBOBOXW) && GetComboBoxInfo(window, &parts) != FALSE) {
    layOutFrom(parts.hwndList, isRight);
  }
}

BOOL CALLBACK layOutChild(HWND child, LPARAM isRight) {
  if (!isOfClass(child, WC_EDITW)) {
    layOutFrom(child, isRight != 0);
  }
  return TRUE;
}

BOOL CALLBACK layOutTip(HWND tip, LPARAM isRight) {
  if (isOfClass(tip, TOOLTIPS_CLASSW)) {
    layOutFrom(tip, isRight != 0);
  }
  return TRUE;
}

}  // namespace

void mirror(HWND window, bool isFromRight) {
  const LPARAM isRight = isFromRight ? 1 : 0;
  layOutFrom(window, isFromRight);
  EnumChildWindows(window, layOutChild, isRight);
  EnumThreadWindows(GetWindowThreadProcessId(window, nullptr), layOutTip, isRight);
}

}  // namespace zelvreg::desktop
