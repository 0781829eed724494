// The keys of the main window that no control uses.
#include <algorithm>

#include "desktop/AccessKeys.h"
#include "desktop/MainWindow.h"
#include "form/Form42.h"
#include "shell/ResultsFilter.h"

namespace zelvreg::desktop {
namespace {

// Whether it and all that it is in are to be seen, be the window itself still hidden.
bool isShown(HWND child) {
  for (HWND each = child; GetAncestor(each, GA_ROOT) != each; each = GetParent(each)) {
    if ((GetWindowLongPtrW(each, GWL_STYLE) & WS_VISIBLE) == 0) {
      return false;
    }
  }
  return true;
}

}  // namespace

// Those of the command bar first, which every page has, and those of the search last.
void MainWindow::giveAccessKeys() {
  std::vector<ButtonPeer*> shownButtons;
  for (const auto& peer : buttons) {
    if (peer->hasCaption() && isShown(peer->hwnd())) {
      shownButtons.push_back(peer.get());
    }
  }
  std::ranges::stable_sort(shownButtons, {}, &ButtonPeer::keyRank);
  std::vector<CheckPeer*> shownChecks;
  for (const auto& peer : others) {
    auto* check = dynamic_cast<CheckPeer*>(peer.get());
    if (check != nullptr && isShown(check->hwnd())) {
      shownChecks.push_back(check);
    }
  }
  std::vector<std::string> captions;
  for (const ButtonPeer* peer : shownButtons) {
    captions.push_back(peer->button().caption);
  }
  for (const CheckPeer* peer : shownChecks) {
    captions.push_back(peer->caption());
  }
  const std::vector<std::string> marked = withAccessKeys(captions);
  for (std::size_t number = 0; number < shownButtons.size(); ++number) {
    shownButtons[number]->setMarked(marked[number]);
  }
  for (std::size_t number = 0; number < shownChecks.size(); ++number) {
    shownChecks[number]->setMarked(marked[shownButtons.size() + number]);
  }
}

FocusArea MainWindow::focusArea() const {
  // The text field is on the window itself, the other search controls are in their frames.
  for (HWND each = GetFocus(); each != nullptr && each != window; each = GetParent(each)) {
    const Peer* peer = Peer::of(each);
    const Control* control = peer == nullptr ? nullptr : &peer->shownControl();
    if (control == &form.cboFind || control == &form.Frame4 || control == &form.Frame5) {
      return FocusArea::SearchControls;
    }
    if (control == &form.View1) {
      return FocusArea::Categories;
    }
  }
  return FocusArea::Elsewhere;
}

bool MainWindow::shortcut(const MSG& message) {
  const bool isControlF =
      message.message == WM_KEYDOWN && message.wParam == 'F' && GetKeyState(VK_CONTROL) < 0;
  if (!isControlF || IsWindowVisible(filter) == FALSE) {
    return false;
  }
  SetFocus(filter);
  SendMessageW(filter, EM_SETSEL, 0, -1);
  return true;
}

void MainWindow::enter() {
  if (GetFocus() == filter) {
    form.View2.setFocus();
    return;
  }
  if (pressFocusedButton()) {
    return;
  }
  if (Button* button = buttonOfEnter(form, focusArea())) {
    button->click();
  }
}

void MainWindow::escape() {
  if (GetFocus() == filter) {
    clearFilter(form);
    return;
  }
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
