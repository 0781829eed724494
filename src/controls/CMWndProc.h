// The window procedure that passes a form's messages about menus to its menus.
#ifndef ZELVREG_CONTROLS_CM_WND_PROC_H
#define ZELVREG_CONTROLS_CM_WND_PROC_H

#include <windows.h>

#include <memory>

#include "controls/CoolMenu.h"

namespace zelvreg::controls {

// Holds the menus in use. The form must outlive it, or destroy its window.
class CMWndProc {
 public:
  explicit CMWndProc(HWND form);
  CMWndProc(const CMWndProc&) = delete;
  CMWndProc& operator=(const CMWndProc&) = delete;
  ~CMWndProc();

  // The menus held before are uninstalled.
  void hold(std::unique_ptr<CoolMenu> menus) { held = std::move(menus); }
  // Null without one.
  [[nodiscard]] CoolMenu* current() const { return held.get(); }
  // Uninstalls the menus and destroys them, as the program does when it ends.
  void release() { held.reset(); }

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);

  HWND window;
  std::unique_ptr<CoolMenu> held;
};

}  // namespace zelvreg::controls

#endif
