#include "desktop/BarPeer.h"

// These need <windows.h> before them.
#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>

namespace zelvreg::desktop {
namespace {

// In pixels at 96 dpi.
constexpr int margin = 6;
constexpr int thickness = 4;

void drawText(const controls::PaintBuffer& buffer, const std::string& text, const RECT& place,
              UINT alignment) {
  buffer.write(utf16(text), place,
               DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS | alignment);
}

}  // namespace

BarPeer::BarPeer(Desk& sharedDesk, HWND parent, Button& shownButton)
    : Peer(sharedDesk, shownButton), button(shownButton) {
  constexpr UINT_PTR subclassId = 1;
  own(makeChild(parent, L"BUTTON", WS_TABSTOP | BS_PUSHBUTTON));
  SetWindowSubclass(hwnd(), procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
  showAll();
}

void BarPeer::show(const Bar& told) {
  if (bar != told) {
    bar = told;
    SetWindowTextW(hwnd(), Wide(bar.name + ": " + std::to_string(bar.count)).get());
    repaint();
  }
}

void BarPeer::command(int code) {
  if (code == BN_CLICKED) {
    button.click();
  }
}

AccessibleFacts BarPeer::facts() const {
  return {.role = ROLE_SYSTEM_PUSHBUTTON,
          .states = bar.isChosen ? STATE_SYSTEM_PRESSED : 0,
          .name = bar.name + ": " + std::to_string(bar.count),
          .value = {},
          .description = {}};
}

void BarPeer::paint() {
  PAINTSTRUCT request{};
  HDC context = BeginPaint(hwnd(), &request);
  RECT place{};
  GetClientRect(hwnd(), &place);
  const controls::PaintBuffer buffer({place.right, place.bottom}, controls::sideOf(context));
  drawBar(buffer);
  buffer.show(context, 0, 0);
  EndPaint(hwnd(), &request);
}

void BarPeer::drawBar(const controls::PaintBuffer& buffer) const {
  const auto [width, height] = buffer.size();
  controls::Canvas canvas = buffer.canvas();
  const Tone ground = bar.isChosen ? Tone::Selected : hover ? Tone::Header : Tone::Surface;
  canvas.clear(desk().color(ground));
  const int left = desk().pixels(margin);
  const int right = width - left;
  const int bottom = height - desk().pixels(3);
  const int top = bottom - desk().pixels(thickness);
  canvas.fill({left, top, right, bottom}, desk().color(Tone::Track));
  const int length = MulDiv(right - left, static_cast<int>(bar.count),
                            static_cast<int>(std::max<std::size_t>(1, bar.longest)));
  canvas.fill({left, top, left + std::max(desk().pixels(2), length), bottom},
              desk().color(Tone::Mark));
  SetBkMode(buffer.dc(), TRANSPARENT);
  SetTextColor(buffer.dc(),
               controls::colorRef(desk().color(bar.isChosen ? Tone::OnSelected : Tone::Text)));
  const controls::Selection bold(buffer.dc(), desk().font(button.font, 0, true));
  const std::string number = std::to_string(bar.count);
  drawText(buffer, number, {left, 0, right, top}, DT_RIGHT);
  const int taken = lineWidth(utf16(number), desk().font(button.font, 0, true));
  const controls::Selection plain(buffer.dc(), desk().font(button.font));
  drawText(buffer, bar.name, {left, 0, right - taken - desk().pixels(margin), top}, DT_LEFT);
  drawFocus(buffer, ground);
}

LRESULT CALLBACK BarPeer::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference) {
  auto* peer = reinterpret_cast<BarPeer*>(reference);
  if (peer->hover.follow(hwnd, message)) {
    peer->repaint();
  }
  switch (message) {
    case WM_PAINT:
      peer->paint();
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_NCDESTROY:
      RemoveWindowSubclass(hwnd, procedure, id);
      break;
    case BM_SETSTATE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
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

}  // namespace zelvreg::desktop
