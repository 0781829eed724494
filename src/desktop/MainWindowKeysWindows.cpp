// The keys of the main window that no control uses.
#include "desktop/MainWindow.h"
#include "form/Form42.h"

namespace zelvreg::desktop {

FocusArea MainWindow::focusArea() const {
  // The text field is on the window itself, the other search controls are in their frames.
  for (HWND each = GetFocus(); each != nullptr && each != window; each = GetParent(each)) {
    const Peer* peer = Peer::of(each);
    const Control* control = peer == nullptr ? nullptr : &peer->shownControl();
    if (control == &form.cboFind || control == &form.Frame4 || control == &form.Frame5) {
      return FocusArea::SearchControls;
    }
  }
  return FocusArea::Elsewhere;
}

void MainWindow::enter() {
  if (pressFocusedButton()) {
    return;
  }
  if (Button* button = buttonOfEnter(form, focusArea())) {
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
