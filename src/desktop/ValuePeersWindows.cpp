// The peers of check boxes, option buttons and the progress of a scan.
#include <windows.h>

// This one needs <windows.h> before it.
#include <commctrl.h>

#include <algorithm>

#include "controls/PaintBuffer.h"
#include "desktop/CheckMark.h"
#include "desktop/SimplePeers.h"
#include "text/Text.h"

namespace zelvreg::desktop {
namespace {

constexpr UINT_PTR subclassId = 1;

// Of a check box, in pixels at 96 dpi. The focus ring needs room behind the text.
constexpr int markLength = 15;
constexpr int besideMark = 6;
constexpr int besideText = 4;

// Paints a window through a buffer of its size.
template <class Draw>
void paintWindow(HWND window, const Draw& draw) {
  PAINTSTRUCT request{};
  HDC context = BeginPaint(window, &request);
  RECT place{};
  GetClientRect(window, &place);
  const controls::PaintBuffer buffer({place.right, place.bottom}, controls::sideOf(context));
  draw(buffer);
  buffer.show(context, 0, 0);
  EndPaint(window, &request);
}

}  // namespace

CheckPeer::CheckPeer(Desk& sharedDesk, HWND parent, CheckBox& shownBox, Tone checkGround)
    : Peer(sharedDesk, shownBox), box(&shownBox), ground(checkGround) {
  make(parent, BS_CHECKBOX);
}

CheckPeer::CheckPeer(Desk& sharedDesk, HWND parent, OptionButton& shownOption,
                     std::function<void()> choose, bool isFirst, Tone checkGround)
    : Peer(sharedDesk, shownOption),
      option(&shownOption),
      onChoose(std::move(choose)),
      ground(checkGround) {
  make(parent, BS_RADIOBUTTON | (isFirst ? WS_GROUP : 0));
}

void CheckPeer::make(HWND parent, DWORD style) {
  own(makeChild(parent, L"BUTTON", WS_TABSTOP | style));
  SetWindowSubclass(hwnd(), procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
  showAll();
}

bool CheckPeer::isOn() const { return box != nullptr ? box->value.get() : option->value.get(); }

const std::string& CheckPeer::caption() const {
  return box != nullptr ? box->caption.get() : option->caption.get();
}

void CheckPeer::setMarked(const std::string& caption) {
  if (marked != caption) {
    marked = caption;
    SetWindowTextW(hwnd(), Wide(caption).get());
  }
}

void CheckPeer::showText() {
  marked.clear();
  SetWindowTextW(hwnd(), Wide(caption()).get());
  if (onText) {
    onText();
  }
}

int CheckPeer::naturalWidth() const {
  return desk().pixels(markLength) + desk().pixels(besideMark) +
         lineWidth(utf16(replaceAll(marked.empty() ? caption() : marked, "&", "")),
                   desk().font(control().font)) +
         desk().pixels(besideText);
}

void CheckPeer::showValue() {
  SendMessageW(hwnd(), BM_SETCHECK, isOn() ? BST_CHECKED : BST_UNCHECKED, 0);
  repaint();
  if (onValue) {
    onValue();
  }
}

void CheckPeer::command(int code) {
  if (code != BN_CLICKED) {
    return;
  }
  if (box != nullptr) {
    box->value = !box->value;
    box->click();
  } else {
    onChoose();
  }
}

void CheckPeer::paint() {
  paintWindow(hwnd(), [this](const controls::PaintBuffer& buffer) {
    controls::Canvas canvas = buffer.canvas();
    canvas.clear(desk().color(ground));
    const int height = buffer.size().height;
    const int length = desk().pixels(markLength);
    const CheckMark mark{.left = 0,
                         .top = (height - length) / 2,
                         .length = length,
                         .isOn = isOn(),
                         .isRound = option != nullptr,
                         .isEnabled = control().enabled,
                         .isHovered = static_cast<bool>(hover),
                         .isPressed = (SendMessageW(hwnd(), BM_GETSTATE, 0, 0) & BST_PUSHED) != 0};
    drawCheckMark(canvas, mark, desk().colors);
    const RECT place{length + desk().pixels(besideMark), 0, buffer.size().width, height};
    const controls::Selection selected(buffer.dc(), desk().font(control().font));
    SetBkMode(buffer.dc(), TRANSPARENT);
    SetTextColor(buffer.dc(),
                 controls::colorRef(desk().color(control().enabled ? Tone::Text : Tone::Disabled)));
    const std::u16string text = utf16(marked.empty() ? caption() : marked);
    const bool hidesKeys = (SendMessageW(hwnd(), WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL) != 0;
    const UINT prefix = marked.empty() ? DT_NOPREFIX : hidesKeys ? DT_HIDEPREFIX : 0;
    buffer.write(text, place, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | prefix);
    drawFocus(buffer, ground);
  });
}

LRESULT CALLBACK CheckPeer::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR reference) {
  auto* peer = reinterpret_cast<CheckPeer*>(reference);
  if (peer->hover.follow(hwnd, message)) {
    peer->repaint();
  }
  switch (message) {
    case WM_NCDESTROY:
      RemoveWindowSubclass(hwnd, procedure, id);
      break;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_PAINT:
      peer->paint();
      return 0;
    case BM_SETSTATE:
    case BM_SETCHECK:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
    case WM_UPDATEUISTATE:
    case WM_SETTEXT: {
      // The class paints on its own for these.
      SendMessageW(hwnd, WM_SETREDRAW, FALSE, 0);
      const LRESULT result = DefSubclassProc(hwnd, message, wParam, lParam);
      SendMessageW(hwnd, WM_SETREDRAW, TRUE, 0);
      ShowWindow(hwnd, peer->control().visible ? SW_SHOWNA : SW_HIDE);
      InvalidateRect(hwnd, nullptr, FALSE);
      return result;
    }
    default:
      break;
  }
  return DefSubclassProc(hwnd, message, wParam, lParam);
}

ProgressPeer::ProgressPeer(Desk& sharedDesk, HWND parent, ProgressBar& shownBar)
    : Peer(sharedDesk, shownBar), bar(shownBar) {
  own(makeChild(parent, PROGRESS_CLASSW, PBS_SMOOTH));
  SetWindowSubclass(hwnd(), procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
  showAll();
}

void ProgressPeer::showValue() {
  SendMessageW(hwnd(), PBM_SETRANGE32, 0, bar.maximum());
  SendMessageW(hwnd(), PBM_SETPOS, static_cast<WPARAM>(bar.value()), 0);
  repaint();
}

void ProgressPeer::showShare(std::optional<double> told) {
  if (known != told) {
    known = told;
    repaint();
  }
}

double ProgressPeer::share() const {
  return known.value_or(static_cast<double>(bar.value()) / std::max(1, bar.maximum()));
}

void ProgressPeer::paint() {
  paintWindow(hwnd(), [this](const controls::PaintBuffer& buffer) {
    controls::Canvas canvas = buffer.canvas();
    canvas.clear(desk().color(Tone::Surface));
    const double height = buffer.size().height;
    const double width = buffer.size().width;
    const Rgb track = desk().color(Tone::Track);
    canvas.draw(controls::Shape{0, 0, width, height, height / 2, 0, track, track});
    if (const double part = share(); part > 0) {
      const Rgb done = desk().color(Tone::Mark);
      canvas.draw(
          controls::Shape{0, 0, std::max(height, width * part), height, height / 2, 0, done, done});
    }
  });
}

LRESULT CALLBACK ProgressPeer::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR id, DWORD_PTR reference) {
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, procedure, id);
  } else if (message == WM_ERASEBKGND) {
    return TRUE;
  } else if (message == WM_PAINT) {
    reinterpret_cast<ProgressPeer*>(reference)->paint();
    return 0;
  }
  return DefSubclassProc(hwnd, message, wParam, lParam);
}

}  // namespace zelvreg::desktop
