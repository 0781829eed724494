#include <windows.h>

// This one stands on the one before.
#include <commctrl.h>

#include "controls/PaintBuffer.h"
#include "desktop/SimplePeers.h"

namespace zelvreg::desktop {
namespace {

constexpr UINT_PTR subclassId = 1;

struct LabelStyle {
  double pointsMore;  // than the control's own font
  bool isBold;
  Rgb colour;
  UINT format;
};

constexpr UINT oneLine = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;

LabelStyle styleOf(LabelLook look) {
  switch (look) {
    case LabelLook::ProgramTitle:
      return {4, true, rgb(0xFFFFFF), oneLine};
    case LabelLook::WindowTitle:
      return {1.5, true, rgb(0xFFFFFF), oneLine};
    case LabelLook::ProgramText:
      return {0, false, rgb(0xE3ECF6), oneLine};
    case LabelLook::PageTitle:
    case LabelLook::Counter:
      return {3, true, colours::text, oneLine};
    case LabelLook::Strong:
      return {0, true, colours::text, oneLine};
    case LabelLook::Secondary:
      return {0, false, colours::secondary, oneLine};
    case LabelLook::SecondaryRight:
      return {0, false, colours::secondary, oneLine | DT_RIGHT};
    case LabelLook::Wrapped:
      return {0, false, colours::secondary, DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL};
    case LabelLook::Problem:
      return {0, false, colours::problem, oneLine | DT_PATH_ELLIPSIS};
    case LabelLook::Link:
      return {0, false, rgb(0x2F5488), oneLine};
    default:
      return {0, false, colours::text, oneLine};
  }
}

// Where the number at the end of a text begins.
std::size_t numberAtEnd(const std::wstring& text) {
  std::size_t start = text.size();
  while (start > 0 && text[start - 1] >= L'0' && text[start - 1] <= L'9') {
    --start;
  }
  return start;
}

void drawText(HDC context, const std::wstring& text, RECT& place, UINT format, Rgb colour) {
  SetTextColor(context, controls::colorRef(colour));
  DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &place, format);
}

}  // namespace

LabelPeer::LabelPeer(Desk& sharedDesk, HWND parent, Label& shownLabel, LabelLook labelLook,
                     Rgb labelGround)
    : Peer(sharedDesk, shownLabel), label(shownLabel), look(labelLook), ground(labelGround) {
  own(makeChild(parent, L"STATIC", SS_OWNERDRAW | SS_NOTIFY));
  SetWindowSubclass(hwnd(), procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
  showAll();
}

std::wstring LabelPeer::text() const { return wideText(label.caption.get(), charset()); }

HFONT LabelPeer::fontInUse() const {
  const LabelStyle style = styleOf(look);
  return desk().font(label.font, style.pointsMore, style.isBold);
}

Rgb LabelPeer::textColour() const {
  const std::uint32_t told = label.foreColor;
  return controls::isSystemColour(told) ? styleOf(look).colour : controls::fromProperty(told);
}

int LabelPeer::textWidth() const {
  const controls::WindowContext context(hwnd());
  const controls::Selection selected(context.get(), fontInUse());
  const std::wstring caption = text();
  SIZE extent{};
  GetTextExtentPoint32W(context.get(), caption.c_str(), static_cast<int>(caption.size()), &extent);
  return extent.cx;
}

void LabelPeer::showText() {
  // The text of the window itself, which screen readers read, follows when the label is drawn.
  repaint();
  if (onText) {
    onText();
  }
}

void LabelPeer::draw(const DRAWITEMSTRUCT& request) {
  const std::wstring caption = text();
  SetWindowTextW(hwnd(), caption.c_str());
  RECT place{0, 0, request.rcItem.right, request.rcItem.bottom};
  const controls::PaintBuffer buffer({place.right, place.bottom});
  const std::uint32_t told = label.backColor;
  buffer.canvas().clear(controls::isSystemColour(told) ? ground : controls::fromProperty(told));
  const controls::Selection selected(buffer.dc(), fontInUse());
  SetBkMode(buffer.dc(), TRANSPARENT);
  const UINT format = styleOf(look).format;
  const std::size_t number = look == LabelLook::Counter ? numberAtEnd(caption) : caption.size();
  drawText(buffer.dc(), caption.substr(0, number), place, format, textColour());
  if (number < caption.size()) {
    SIZE extent{};
    GetTextExtentPoint32W(buffer.dc(), caption.c_str(), static_cast<int>(number), &extent);
    place.left += extent.cx;
    drawText(buffer.dc(), caption.substr(number), place, format,
             caption.substr(number) == L"0" ? textColour() : colours::problem);
  }
  buffer.show(request.hDC, request.rcItem.left, request.rcItem.top);
}

LRESULT CALLBACK LabelPeer::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR reference) {
  auto* peer = reinterpret_cast<LabelPeer*>(reference);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, procedure, id);
  } else if (message == WM_NCHITTEST && !peer->onClick) {
    // The window below can be dragged by its texts, too.
    return HTTRANSPARENT;
  } else if (message == WM_LBUTTONUP && peer->onClick) {
    peer->onClick();
    return 0;
  } else if (message == WM_MOUSEMOVE && peer->onMouseMove) {
    peer->onMouseMove();
  } else if (message == WM_SETCURSOR && peer->onClick) {
    SetCursor(LoadCursorA(nullptr, IDC_HAND));
    return TRUE;
  }
  return DefSubclassProc(hwnd, message, wParam, lParam);
}

}  // namespace zelvreg::desktop
