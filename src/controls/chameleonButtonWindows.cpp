#include "controls/chameleonButton.h"

// This one needs <windows.h> before it.
#include <commctrl.h>

#include <array>
#include <vector>

#include "controls/ButtonPainter.h"
#include "controls/KeyStrokes.h"

namespace zelvreg::controls {
namespace {

constexpr UINT_PTR subclassId = 1;
constexpr UINT_PTR OverTimer = 1;
constexpr UINT overInterval = 50;  // milliseconds

// The cursors of MousePointer, by its number.
LPCWSTR cursorOf(std::int16_t pointer) {
  static const std::array<LPCWSTR, 16> cursors = {
      IDC_ARROW,    IDC_ARROW,       IDC_CROSS,    IDC_IBEAM,  IDC_ARROW,   IDC_SIZEALL,
      IDC_SIZENESW, IDC_SIZENS,      IDC_SIZENWSE, IDC_SIZEWE, IDC_UPARROW, IDC_WAIT,
      IDC_NO,       IDC_APPSTARTING, IDC_HELP,     IDC_SIZEALL};
  const auto index = static_cast<std::size_t>(pointer);
  return index < cursors.size() ? cursors[index] : cursors[0];
}

void sendKeys(std::string_view keys) {
  std::vector<INPUT> inputs;
  for (const KeyStroke& stroke : keyStrokes(keys)) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = stroke.key;
    input.ki.dwFlags = stroke.isDown ? 0 : KEYEVENTF_KEYUP;
    inputs.push_back(input);
  }
  if (!inputs.empty()) {
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
  }
}

}  // namespace

chameleonButton::chameleonButton(HWND parent, int id, const Ambient& ambient, int dpiOfParent)
    : form(ambient), dpi(dpiOfParent) {
  design = ButtonDesign(readButton({}, ambient));
  palette.system = systemColors();
  window = CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_TABSTOP | BS_OWNERDRAW, 0, 0, 0, 0,
                           parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                           GetModuleHandleW(nullptr), nullptr);
  SetWindowSubclass(window, procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
  // Once for all buttons of a parent: a message to the parent about a button goes back to the
  // button.
  SetWindowSubclass(parent, parentProcedure, subclassId, 0);
  applyFont();
}

chameleonButton::~chameleonButton() {
  if (tip != nullptr) {
    DestroyWindow(tip);
  }
  if (window != nullptr) {
    RemoveWindowSubclass(window, procedure, subclassId);
    DestroyWindow(window);
  }
  if (mouseIcon != nullptr) {
    DestroyIcon(mouseIcon);
  }
}

chameleonButton* chameleonButton::of(HWND window) {
  DWORD_PTR reference = 0;
  GetWindowSubclass(window, procedure, subclassId, &reference);
  return reinterpret_cast<chameleonButton*>(reference);
}

LRESULT CALLBACK chameleonButton::parentProcedure(HWND hwnd, UINT message, WPARAM wParam,
                                                  LPARAM lParam, UINT_PTR id, DWORD_PTR) {
  if (message == WM_DRAWITEM) {
    const auto* request = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    const chameleonButton* button =
        request->CtlType == ODT_BUTTON ? of(request->hwndItem) : nullptr;
    if (button != nullptr) {
      button->paint(request->hDC);
      return TRUE;
    }
  }
  if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED && lParam != 0) {
    const auto child = reinterpret_cast<HWND>(lParam);
    const LRESULT result = DefSubclassProc(hwnd, message, wParam, lParam);
    // Looked up only now, because the parent may have destroyed the button.
    if (chameleonButton* button = of(child)) {
      button->clicked();
    }
    return result;
  }
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, parentProcedure, id);
  }
  return DefSubclassProc(hwnd, message, wParam, lParam);
}

LRESULT CALLBACK chameleonButton::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR id, DWORD_PTR reference) {
  auto* button = reinterpret_cast<chameleonButton*>(reference);
  if (message == WM_NCDESTROY) {
    button->window = nullptr;
    RemoveWindowSubclass(hwnd, procedure, id);
    return DefSubclassProc(hwnd, message, wParam, lParam);
  }
  return button->handle(message, wParam, lParam);
}

LRESULT chameleonButton::handle(UINT message, WPARAM wParam, LPARAM lParam) {
  if (const auto answered = answer(message, wParam)) {
    return *answered;
  }
  if (message == WM_MOUSEMOVE) {
    mouseEntered();
  }
  if (message == WM_LBUTTONDBLCLK) {
    // Two quick presses are two presses; the class would ignore the second.
    message = WM_LBUTTONDOWN;
  }
  tellKey(message, wParam);
  tellMouse(message, lParam);
  // Releasing the mouse or a key clicks the button, which may destroy this control.
  HWND handled = window;
  const LRESULT result = DefSubclassProc(handled, message, wParam, lParam);
  if (of(handled) == this) {
    follow(message);
  }
  return result;
}

// The answer to a message that the system's class must not handle.
std::optional<LRESULT> chameleonButton::answer(UINT message, WPARAM wParam) {
  switch (message) {
    case WM_GETDLGCODE:
      return DLGC_BUTTON | DLGC_WANTARROWS |
             (isDialogDefault ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON);
    case BM_SETSTYLE:
      // The dialog manager moves the default button; the class would stop being owner-drawn.
      isDialogDefault = (wParam & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
      return 0;
    case BM_GETCHECK:
      return properties().CheckBoxBehaviour && properties().Value ? BST_CHECKED : BST_UNCHECKED;
    case BM_SETCHECK:
      set(&ButtonProperties::Value, wParam == BST_CHECKED);
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_SETCURSOR:
      return showCursor() ? std::optional<LRESULT>(TRUE) : std::nullopt;
    case WM_TIMER:
      if (wParam == OverTimer) {
        overTimerTick();
        return 0;
      }
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

void chameleonButton::tellKey(UINT message, WPARAM wParam) const {
  if (message == WM_KEYDOWN) {
    if (onKeyDown) {
      onKeyDown(static_cast<int>(wParam));
    }
    sendKeys(focusKeys(static_cast<std::uint16_t>(wParam)));
  } else if (message == WM_KEYUP && onKeyUp) {
    onKeyUp(static_cast<int>(wParam));
  }
}

// Shows what a message has changed in the system's class.
void chameleonButton::follow(UINT message) const {
  switch (message) {
    case WM_SIZE:
      applyOutline();
      repaint();
      break;
    case BM_SETSTATE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
    case WM_SETTEXT:
    case WM_UPDATEUISTATE:
      repaint();
      break;
    default:
      break;
  }
}

void chameleonButton::tellMouse(UINT message, LPARAM lParam) const {
  const int x = static_cast<short>(LOWORD(lParam));
  const int y = static_cast<short>(HIWORD(lParam));
  const auto tell = [x, y](const auto& event, int button) {
    if (event) {
      event(button, x, y);
    }
  };
  switch (message) {
    case WM_MOUSEMOVE:
      tell(onMouseMove, 0);
      break;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
      tell(onMouseDown, message == WM_LBUTTONDOWN ? 1 : 2);
      break;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
      tell(onMouseUp, message == WM_LBUTTONUP ? 1 : 2);
      break;
    default:
      break;
  }
}

void chameleonButton::clicked() {
  if (properties().CheckBoxBehaviour) {
    set(&ButtonProperties::Value, !properties().Value);
  }
  // A copy, because the click may destroy the control.
  if (const auto event = onClick) {
    event();
  }
}

void chameleonButton::mouseEntered() {
  // While it is held down, it receives mouse moves from outside as well.
  if (!isOver && cursorIsOn()) {
    SetTimer(window, OverTimer, overInterval, nullptr);
    setOver(true);
  }
}

void chameleonButton::setOver(bool value) {
  isOver = value;
  if (outlineRadius(properties(), true, dpi) != outlineRadius(properties(), false, dpi)) {
    applyOutline();
  }
  repaint();
}

void chameleonButton::overTimerTick() {
  // A tick that was in the queue comes even after the timer was stopped.
  if (!isOver || cursorIsOn()) {
    return;
  }
  KillTimer(window, OverTimer);
  setOver(false);
  if (onMouseOut) {
    onMouseOut();
  }
}

bool chameleonButton::cursorIsOn() const {
  POINT cursor{};
  return GetCursorPos(&cursor) != 0 && WindowFromPoint(cursor) == window;
}

bool chameleonButton::showCursor() {
  const std::int16_t pointer = properties().MousePointer;
  if (pointer == 99 && mouseIcon != nullptr) {
    SetCursor(mouseIcon);
  } else if (properties().HandPointer) {
    SetCursor(LoadCursorW(nullptr, IDC_HAND));
  } else if (pointer != 0) {
    SetCursor(LoadCursorW(nullptr, cursorOf(pointer)));
  } else {
    return false;
  }
  return true;
}

ButtonState chameleonButton::stateNow() const {
  return {.isHovered = isOver,
          .isPressed = (SendMessageW(window, BM_GETSTATE, 0, 0) & BST_PUSHED) != 0,
          .isFocused = GetFocus() == window,
          .isDefault = isDefault};
}

}  // namespace zelvreg::controls
