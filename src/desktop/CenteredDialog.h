// Puts a dialog of the system into the middle of its owner: by itself it opens at the screen's
// corner.
#ifndef ZELVREG_DESKTOP_CENTERED_DIALOG_H
#define ZELVREG_DESKTOP_CENTERED_DIALOG_H

#include <windows.h>

namespace zelvreg::desktop {

// As long as it lives, the first dialog of that owner is moved when it is activated, as far as the
// work area of the owner's screen has room. One at a time.
class CenteredDialog {
 public:
  explicit CenteredDialog(HWND ownerOfDialog);
  CenteredDialog(const CenteredDialog&) = delete;
  CenteredDialog& operator=(const CenteredDialog&) = delete;
  ~CenteredDialog();

 private:
  static LRESULT CALLBACK procedure(int code, WPARAM wParam, LPARAM lParam);
  void center(HWND dialog);

  HWND owner;
  HHOOK hook;
};

}  // namespace zelvreg::desktop

#endif
