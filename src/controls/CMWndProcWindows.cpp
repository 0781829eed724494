#include "controls/CMWndProc.h"

namespace zelvreg::controls {
namespace {

constexpr UINT_PTR subclassId = 2;

}  // namespace

CMWndProc::CMWndProc(HWND form) : window(form) {
  SetWindowSubclass(window, procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
}

CMWndProc::~CMWndProc() {
  if (window != nullptr) {
    RemoveWindowSubclass(window, procedure, subclassId);
  }
}

LRESULT CALLBACK CMWndProc::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR reference) {
  auto* self = reinterpret_cast<CMWndProc*>(reference);
  const CoolMenu* menus = self->current();
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, procedure, id);
    self->window = nullptr;
  } else if (menus != nullptr) {
    if ((message == WM_MEASUREITEM && menus->measure(lParam)) ||
        (message == WM_DRAWITEM && menus->draw(lParam))) {
      return TRUE;
    }
    if (message == WM_MENUCHAR) {
      const auto answer =
          menus->findKey(reinterpret_cast<HMENU>(lParam), static_cast<char16_t>(LOWORD(wParam)));
      if (answer) {
        return *answer;
      }
    }
  }
  return DefSubclassProc(hwnd, message, wParam, lParam);
}

}  // namespace zelvreg::controls
