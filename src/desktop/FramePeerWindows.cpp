#include "desktop/FramePeer.h"

#include "controls/PaintBuffer.h"

namespace zelvreg::desktop {
namespace {

constexpr const wchar_t* frameClass = L"ZelvregFrame";
constexpr int titleFrom = 4;
constexpr int titleTo = 30;
constexpr int captionTo = 17;

}  // namespace

FramePeer::FramePeer(Desk& sharedDesk, HWND parent, Frame& shownFrame, FrameOptions frameOptions)
    : Peer(sharedDesk, shownFrame), frame(shownFrame), options(frameOptions) {
  registerClass(frameClass, procedure);
  own(makeChild(parent, frameClass, WS_CLIPCHILDREN, WS_EX_CONTROLPARENT));
  showAll();
}

void FramePeer::changed(const Control& control, Change what, std::size_t row) {
  Peer::changed(control, what, row);
  if (what == Change::Visible && onVisible) {
    // The language picker lies over the page that is shown.
    if (frame.visible && onKey) {
      SetWindowPos(hwnd(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
      SetFocus(hwnd());
    }
    onVisible();
  }
}

void FramePeer::showText() {
  SetWindowTextW(hwnd(), Wide(frame.caption.get()).get());
  // The text is part of the ground.
  InvalidateRect(hwnd(), nullptr, TRUE);
}

void FramePeer::showPlace() {
  if (placeOf) {
    moveTo(placeOf());
  } else {
    Peer::showPlace();
  }
}

void FramePeer::paintGround(HDC context) const {
  RECT place{};
  GetClientRect(hwnd(), &place);
  const controls::PaintBuffer buffer({place.right, place.bottom}, controls::sideOf(context));
  controls::Canvas canvas = buffer.canvas();
  canvas.clear(desk().color(options.isCard ? options.behind : options.ground));
  if (options.isCard) {
    const double radius = desk().pixels(5);
    const double width = place.right;
    const double height = place.bottom;
    const Rgb ground = desk().color(options.ground);
    const Rgb line = desk().color(Tone::Line);
    canvas.draw(controls::Shape{0, 0, width, height, radius, 0, ground, ground});
    canvas.draw(controls::Shape{0, 0, width, height, radius, 1, line, line});
  }
  if (options.hasTitle || options.hasCaption) {
    const std::u16string text = utf16(titleOf ? titleOf() : frame.caption.get());
    const controls::Selection selected(buffer.dc(),
                                       desk().font(frame.font, options.hasTitle ? 3 : 0, true));
    SetBkMode(buffer.dc(), TRANSPARENT);
    SetTextColor(buffer.dc(),
                 controls::colorRef(desk().color(options.hasTitle ? Tone::Text : Tone::Secondary)));
    RECT line = place;
    line.top = options.hasTitle ? desk().pixels(titleFrom) : 0;
    line.bottom = desk().pixels(options.hasTitle ? titleTo : captionTo);
    buffer.write(text, line, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  }
  buffer.show(context, 0, 0);
}

std::optional<LRESULT> FramePeer::keyMessage(UINT message, WPARAM wParam) const {
  if (message == WM_GETDLGCODE) {
    return DLGC_WANTARROWS | DLGC_WANTALLKEYS;
  }
  if (message == WM_KEYDOWN && onKey(wParam)) {
    return 0;
  }
  return std::nullopt;
}

LRESULT CALLBACK FramePeer::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (const auto answer = reflect(message, wParam, lParam)) {
    return *answer;
  }
  const auto* peer = static_cast<FramePeer*>(Peer::of(hwnd));
  if (peer == nullptr) {
    return DefWindowProcW(hwnd, message, wParam, lParam);
  }
  if (peer->onKey) {
    if (const auto answer = peer->keyMessage(message, wParam)) {
      return *answer;
    }
  }
  switch (message) {
    case WM_ERASEBKGND:
      peer->paintGround(reinterpret_cast<HDC>(wParam));
      return TRUE;
    case WM_MOUSEMOVE:
      if (peer->onMouseMove) {
        peer->onMouseMove();
      }
      break;
    case WM_LBUTTONDOWN:
      // The window can be dragged by its pages.
      if (!peer->options.isCard) {
        ReleaseCapture();
        SendMessageW(GetAncestor(hwnd, GA_ROOT), WM_NCLBUTTONDOWN, HTCAPTION,
                     static_cast<LPARAM>(GetMessagePos()));
        return 0;
      }
      break;
    default:
      break;
  }
  return DefWindowProcW(hwnd, message, wParam, lParam);
}

}  // namespace zelvreg::desktop
