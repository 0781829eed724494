// A button on a form, and what tests do with it.
#ifndef ZELVREG_TESTS_CONTROLS_CHAMELEON_BUTTON_FIXTURE_H
#define ZELVREG_TESTS_CONTROLS_CHAMELEON_BUTTON_FIXTURE_H

#include <memory>

#include "controls/FormFixture.h"
#include "controls/chameleonButton.h"

namespace zelvreg::controls {

class ChameleonButton : public ::testing::Test {
 protected:
  ChameleonButton() {
    button->place({20, 30, 120, 62});
    ShowWindow(button->hwnd(), SW_SHOW);
  }

  static LRESULT send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(window, message, wParam, lParam);
  }
  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return send(button->hwnd(), message, wParam, lParam);
  }
  // A key as the message loop of a form receives it.
  void pressInDialog(HWND window, UINT message, WPARAM key) const {
    MSG press{};
    press.hwnd = window;
    press.message = message;
    press.wParam = key;
    if (IsDialogMessageW(form.hwnd(), &press) == 0) {
      DispatchMessageW(&press);
    }
  }
  void moveMouseOn() const {
    SetCursorPos(50 + 40, 40 + 40);
    send(WM_MOUSEMOVE, 0, MAKELPARAM(20, 10));
  }
  void tick() const { send(WM_TIMER, 1); }
  Bitmap painted() const {
    const PaintBuffer buffer({100, 32});
    button->paint(buffer.dc());
    return buffer.copy();
  }

  fixture::Form form;
  std::unique_ptr<chameleonButton> button = std::make_unique<chameleonButton>(form.hwnd(), 7);
};

}  // namespace zelvreg::controls

#endif
