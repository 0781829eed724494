// The keys of the main window that belong to no control of its own.
#include "desktop/MainWindow.h"

namespace zelvreg::desktop {

void MainWindow::enter() {
  HWND focus = GetFocus();
  if (pressFocusedButton()) {
    return;
  }
  const auto holds = [focus](HWND frame) { return IsChild(frame, focus) != FALSE; };
  const bool isInSearch = holds(parentOf(&form.Frame4)) || holds(parentOf(&form.Frame5));
  Button* button =
      buttonOfEnter(form, isInSearch ? FocusArea::SearchControls : FocusArea::Elsewhere);
  if (button != nullptr) {
    button->click();
  }
}

void MainWindow::escape() {
  if (Button* button = buttonOfEscape(form)) {
    button->click();
  }
}

bool MainWindow::pickerKey(WPARAM key) {
  switch (key) {
    case VK_UP:
    case VK_LEFT:
      pickerKeys.move(-1);
      return true;
    case VK_DOWN:
    case VK_RIGHT:
      pickerKeys.move(1);
      return true;
    case VK_RETURN:
    case VK_SPACE:
      pickerKeys.choose();
      break;
    case VK_ESCAPE:
    case VK_TAB:
      form.chameleonButton13.click();
      break;
    default:
      return false;
  }
  // Back to where it was opened.
  if (ButtonPeer* button = peerOf(form.chameleonButton13)) {
    SetFocus(button->hwnd());
  }
  return true;
}

}  // namespace zelvreg::desktop
