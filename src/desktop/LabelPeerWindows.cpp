#include <windows.h>

// This one needs <windows.h> before it.
#include <commctrl.h>

#include <algorithm>

#include "controls/PaintBuffer.h"
#include "desktop/Accessible.h"
#include "desktop/SimplePeers.h"

namespace zelvreg::desktop {
namespace {

constexpr UINT_PTR subclassId = 1;

struct LabelStyle {
  double pointsMore;  // than the control's own font
  bool isBold;
  Tone tone;
  UINT format;
};

constexpr UINT oneLine = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
constexpr UINT severalLines = DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL;

LabelStyle styleOf(LabelLook look) {
  switch (look) {
    case LabelLook::ProgramTitle:
      return {4, true, Tone::OnAccent, oneLine};
    case LabelLook::WindowTitle:
      return {1.5, true, Tone::OnAccent, oneLine};
    case LabelLook::ProgramText:
      return {0, false, Tone::QuietOnAccent, oneLine};
    case LabelLook::PageTitle:
    case LabelLook::Counter:
    case LabelLook::Outcome:
      return {3, true, Tone::Text, oneLine};
    case LabelLook::Strong:
      return {0, true, Tone::Text, oneLine};
    case LabelLook::Secondary:
      return {0, false, Tone::Secondary, oneLine};
    case LabelLook::SecondaryRight:
      return {0, false, Tone::Secondary, oneLine | DT_RIGHT};
    case LabelLook::Wrapped:
      return {0, false, Tone::Secondary, severalLines};
    case LabelLook::Explanation:
      return {0, false, Tone::Text, severalLines};
    case LabelLook::Problem:
      return {0, false, Tone::Problem, oneLine | DT_PATH_ELLIPSIS};
    case LabelLook::Link:
      return {0, false, Tone::Link, oneLine};
    default:
      return {0, false, Tone::Text, oneLine};
  }
}

// Where the number at the end of a text begins.
std::size_t numberAtEnd(const std::u16string& text) {
  std::size_t start = text.size();
  while (start > 0 && text[start - 1] >= u'0' && text[start - 1] <= u'9') {
    --start;
  }
  return start;
}

void drawText(const controls::PaintBuffer& buffer, const std::u16string& text, const RECT& place,
              UINT format, Rgb color) {
  SetTextColor(buffer.dc(), controls::colorRef(color));
  buffer.write(text, place, format);
}

}  // namespace

LabelPeer::LabelPeer(Desk& sharedDesk, HWND parent, Label& shownLabel, LabelLook labelLook,
                     Tone labelGround)
    : Peer(sharedDesk, shownLabel), label(shownLabel), look(labelLook), ground(labelGround) {
  const DWORD stop = look == LabelLook::Link ? WS_TABSTOP : 0;
  own(makeChild(parent, L"STATIC", SS_OWNERDRAW | SS_NOTIFY | stop));
  SetWindowSubclass(hwnd(), procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
  showAll();
}

std::u16string LabelPeer::text() const { return utf16(label.caption.get()); }

HFONT LabelPeer::fontInUse() const {
  const LabelStyle style = styleOf(look);
  return desk().font(label.font, style.pointsMore, style.isBold);
}

// Whether the form has given its ground a color, as it does for an entry under the mouse.
bool LabelPeer::isMarked() const { return !controls::isSystemColor(label.backColor); }

// The form knows one theme; in the other one, what it marks has the color of a selection.
Rgb LabelPeer::groundColor() const {
  const bool isLight = !desk().colors.isSystem() && desk().colors.theme() == Theme::Light;
  if (isMarked() && isLight) {
    return controls::fromProperty(label.backColor);
  }
  return desk().color(isMarked() ? Tone::Selected : ground);
}

Rgb LabelPeer::textColor() const {
  if (desk().colors.isSystem() && isMarked()) {
    return desk().color(Tone::OnSelected);
  }
  const std::uint32_t told = label.foreColor;
  return controls::isSystemColor(told) || desk().colors.isSystem()
             ? desk().color(styleOf(look).tone)
             : desk().colors.textFrom(told, ground);
}

int LabelPeer::textWidth() const { return lineWidth(text(), fontInUse()); }

void LabelPeer::readAloud() {
  isLive = true;
  makeLive(hwnd());
}

void LabelPeer::showText() {
  repaint();
  if (onText) {
    onText();
  }
}

// The number stays when there is no room for all of the words.
void LabelPeer::drawCounter(const controls::PaintBuffer& buffer, const std::u16string& caption,
                            RECT place) const {
  const std::size_t number = numberAtEnd(caption);
  const std::u16string words = caption.substr(0, number);
  const std::u16string digits = caption.substr(number);
  SIZE ofWords{};
  SIZE ofDigits{};
  GetTextExtentPoint32W(buffer.dc(), wideText(words), static_cast<int>(words.size()), &ofWords);
  GetTextExtentPoint32W(buffer.dc(), wideText(digits), static_cast<int>(digits.size()), &ofDigits);
  const LONG start = std::max<LONG>(0, std::min(ofWords.cx, place.right - ofDigits.cx));
  const RECT before{0, place.top, start, place.bottom};
  const UINT format = styleOf(look).format;
  drawText(buffer, words, before, format, textColor());
  place.left = start;
  drawText(buffer, digits, place, format,
           digits == u"0" ? textColor() : desk().color(Tone::Problem));
}

void LabelPeer::draw(const DRAWITEMSTRUCT& request) {
  const std::u16string caption = text();
  if (caption != read) {
    // The text for screen readers; updated only here, because nobody could read faster changes.
    read = caption;
    SetWindowTextW(hwnd(), wideText(caption));
    if (isLive) {
      tellChange(hwnd());
    }
  }
  const RECT place{0, 0, request.rcItem.right, request.rcItem.bottom};
  const controls::PaintBuffer buffer({place.right, place.bottom}, controls::sideOf(request.hDC));
  buffer.canvas().clear(groundColor());
  const controls::Selection selected(buffer.dc(), fontInUse());
  SetBkMode(buffer.dc(), TRANSPARENT);
  if (look == LabelLook::Counter) {
    drawCounter(buffer, caption, place);
  } else {
    drawText(buffer, caption, place, styleOf(look).format, textColor());
  }
  drawFocus(buffer, ground);
  buffer.show(request.hDC, request.rcItem.left, request.rcItem.top);
}

LRESULT CALLBACK LabelPeer::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR reference) {
  auto* peer = reinterpret_cast<LabelPeer*>(reference);
  if (peer->look == LabelLook::Link) {
    if (const auto answer = pressByKey(message, wParam, lParam, peer->onClick)) {
      return *answer;
    }
  }
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, procedure, id);
  } else if (message == WM_SETTEXT) {
    // The class would paint on its own.
    return DefWindowProcW(hwnd, message, wParam, lParam);
  } else if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
    InvalidateRect(hwnd, nullptr, FALSE);
  } else if (message == WM_NCHITTEST && !peer->onClick) {
    // The window can be dragged by its texts, too.
    return HTTRANSPARENT;
  } else if (message == WM_LBUTTONUP && peer->onClick) {
    peer->onClick();
    return 0;
  } else if (message == WM_MOUSEMOVE && peer->onMouseMove) {
    peer->onMouseMove();
  } else if (message == WM_SETCURSOR && peer->onClick) {
    SetCursor(LoadCursorW(nullptr, IDC_HAND));
    return TRUE;
  }
  return DefSubclassProc(hwnd, message, wParam, lParam);
}

}  // namespace zelvreg::desktop
