// The peers of texts that the user types or chooses.
#include <windows.h>

// This one needs <windows.h> before it.
#include <commctrl.h>

#include <algorithm>

#include "controls/PaintBuffer.h"
#include "desktop/Accessible.h"
#include "desktop/FieldColors.h"
#include "desktop/SimplePeers.h"

namespace zelvreg::desktop {
namespace {

std::string typedText(HWND window) {
  std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, u'\0');
  const int length = GetWindowTextW(window, roomIn(text), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return utf8(text);
}

// The colors of a field for text, as the answer to the field's question.
LRESULT fieldColors(HDC context, Desk& desk) {
  SetTextColor(context, controls::colorRef(desk.color(Tone::Text)));
  SetBkColor(context, controls::colorRef(desk.color(Tone::Surface)));
  return reinterpret_cast<LRESULT>(desk.brush(Tone::Surface));
}

int lineHeight(HWND window, HFONT font) {
  const controls::WindowContext context(window);
  const controls::Selection selected(context.get(), font);
  TEXTMETRICW metrics{};
  GetTextMetricsW(context.get(), &metrics);
  return metrics.tmHeight;
}

}  // namespace

EditPeer::EditPeer(Desk& sharedDesk, HWND parent, TextBox& shownBox)
    : Peer(sharedDesk, shownBox), box(shownBox) {
  own(makeChild(parent, L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL));
  constexpr UINT_PTR subclassId = 1;
  SetWindowSubclass(hwnd(), procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
  // A key of the registry is read from the left, wherever the window is laid out from.
  SetWindowLongPtrW(hwnd(), GWL_EXSTYLE, GetWindowLongPtrW(hwnd(), GWL_EXSTYLE) & ~WS_EX_LAYOUTRTL);
  showAll();
}

LRESULT CALLBACK EditPeer::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR id, DWORD_PTR reference) {
  if (message == WM_NCHITTEST) {
    return HTCLIENT;
  }
  auto* peer = reinterpret_cast<EditPeer*>(reference);
  const LRESULT result = DefSubclassProc(hwnd, message, wParam, lParam);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, procedure, id);
  } else if (message == WM_NCCALCSIZE) {
    peer->leaveMargins(*reinterpret_cast<RECT*>(lParam));
  } else if (peer->hover.follow(hwnd, message)) {
    peer->paintEdge();
  } else if (message == WM_PAINT || message == WM_NCPAINT) {
    peer->paintEdge();
    peer->paintCue();
  } else if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
    RedrawWindow(hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
  }
  return result;
}

void EditPeer::showLook() {
  Peer::showLook();
  SetWindowPos(hwnd(), nullptr, 0, 0, 0, 0,
               SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void EditPeer::leaveMargins(RECT& inner) const {
  const LONG free = inner.bottom - inner.top - lineHeight(hwnd(), desk().font(box.font));
  const LONG beside = desk().pixels(3);
  if (free > 0 && inner.right - inner.left > 2 * beside) {
    inner.top += free / 2;
    inner.bottom -= free - free / 2;
    InflateRect(&inner, -beside, 0);
  }
}

void EditPeer::paintEdge() const {
  RECT place{};
  RECT inner{};
  GetWindowRect(hwnd(), &place);
  GetClientRect(hwnd(), &inner);
  MapWindowPoints(hwnd(), nullptr, reinterpret_cast<POINT*>(&inner), 2);
  OffsetRect(&inner, -place.left, -place.top);
  OffsetRect(&place, -place.left, -place.top);
  HDC context = GetWindowDC(hwnd());
  ExcludeClipRect(context, inner.left, inner.top, inner.right, inner.bottom);
  FillRect(context, &place, desk().brush(Tone::Surface));
  const FieldState state{.isEnabled = control().enabled,
                         .isFocused = GetFocus() == hwnd(),
                         .isHovered = static_cast<bool>(hover)};
  FrameRect(context, &place, desk().brush(edgeOf(state)));
  ReleaseDC(hwnd(), context);
}

// The class's own cue has a color that cannot be chosen.
void EditPeer::paintCue() const {
  if (!cueOf || GetWindowTextLengthW(hwnd()) > 0) {
    return;
  }
  const std::u16string cue = utf16(cueOf());
  const controls::WindowContext context(hwnd());
  const controls::Selection selected(context.get(), desk().font(box.font));
  RECT place{};
  SendMessageW(hwnd(), EM_GETRECT, 0, reinterpret_cast<LPARAM>(&place));
  SetBkMode(context.get(), TRANSPARENT);
  SetTextColor(context.get(), controls::colorRef(desk().color(Tone::Secondary)));
  DrawTextW(context.get(), wideText(cue), static_cast<int>(cue.size()), &place,
            DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

void EditPeer::showText() {
  if (!isTyped) {
    SetWindowTextW(hwnd(), Wide(box.text()).get());
  }
}

std::optional<LRESULT> EditPeer::colors(HDC context) { return fieldColors(context, desk()); }

void EditPeer::command(int code) {
  if (code == EN_CHANGE && cueOf) {
    InvalidateRect(hwnd(), nullptr, TRUE);
  }
  if (code == EN_CHANGE && !isTyped) {
    const std::string text = typedText(hwnd());
    if (text != box.text()) {
      isTyped = true;
      box.setText(text);
      isTyped = false;
    }
  }
}

ComboPeer::ComboPeer(Desk& sharedDesk, HWND parent, ComboBox& shownBox,
                     std::function<std::string(const std::string& entry)> translate)
    : Peer(sharedDesk, shownBox), box(shownBox), shownAs(std::move(translate)) {
  const DWORD style = box.comboStyle() == ComboStyle::Editable ? CBS_DROPDOWN : CBS_DROPDOWNLIST;
  own(makeChild(
      parent, L"COMBOBOX",
      WS_TABSTOP | WS_VSCROLL | CBS_AUTOHSCROLL | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | style));
  constexpr UINT_PTR subclassId = 1;
  SetWindowSubclass(hwnd(), procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
  if (HWND text = field()) {
    SetWindowSubclass(text, textProcedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
    tellFacts(text);
  }
  showRows(Change::Rows, 0);
  showAll();
}

void ComboPeer::draw(const DRAWITEMSTRUCT& request) {
  const RECT& place = request.rcItem;
  const bool isFace = (request.itemState & ODS_COMBOBOXEDIT) != 0;
  const bool isChosen = (request.itemState & ODS_SELECTED) != 0 && !isFace;
  if (isFace && desk().isMirrored) {
    // Not every system turns the limits that its class sets.
    SelectClipRgn(request.hDC, nullptr);
  }
  const auto position = static_cast<int>(request.itemID);
  if (position < 0) {
    FillRect(request.hDC, &place, desk().brush(Tone::Surface));
    return;
  }
  const controls::PaintBuffer buffer({place.right - place.left, place.bottom - place.top},
                                     controls::sideOf(request.hDC));
  buffer.canvas().clear(desk().color(isChosen ? Tone::Selected : Tone::Surface));
  const std::u16string text = utf16(entryText(position));
  const Tone tone = !control().enabled ? Tone::Disabled : isChosen ? Tone::OnSelected : Tone::Text;
  const controls::Selection selected(buffer.dc(), desk().font(control().font));
  SetBkMode(buffer.dc(), TRANSPARENT);
  SetTextColor(buffer.dc(), controls::colorRef(desk().color(tone)));
  RECT all{};
  GetClientRect(hwnd(), &all);
  const LONG end = isFace ? all.right - arrowWidth() - place.left : buffer.size().width;
  buffer.write(text, {desk().pixels(4), 0, end, buffer.size().height},
               DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  buffer.show(request.hDC, place.left, place.top);
}

std::string ComboPeer::entryText(int position) const {
  return shownAs ? shownAs(box.entry(position)) : box.entry(position);
}

// The button of the class does not grow with every resolution.
int ComboPeer::arrowWidth() const { return desk().pixels(18); }

HWND ComboPeer::field() const {
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  const bool isKnown = GetComboBoxInfo(hwnd(), &parts) != FALSE;
  return isKnown && box.comboStyle() == ComboStyle::Editable ? parts.hwndItem : nullptr;
}

void ComboPeer::placeField() const {
  HWND edit = field();
  if (edit == nullptr) {
    return;
  }
  RECT all{};
  GetClientRect(hwnd(), &all);
  const int height = lineHeight(edit, desk().font(control().font));
  const int left = desk().pixels(4);
  SetWindowPos(edit, nullptr, left, (all.bottom - height) / 2, all.right - arrowWidth() - left,
               height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void ComboPeer::drawEdge() const {
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  if (GetComboBoxInfo(hwnd(), &parts) == FALSE) {
    return;
  }
  RECT all{};
  GetClientRect(hwnd(), &all);
  const controls::WindowContext context(hwnd());
  // The text stays; in an editable box it is a window of its own. The class leaves a line around
  // it.
  RECT text = parts.rcItem;
  if (HWND edit = field()) {
    GetWindowRect(edit, &text);
    MapWindowPoints(nullptr, hwnd(), reinterpret_cast<POINT*>(&text), 2);
  } else {
    InflateRect(&text, -1, -1);
    text.right = std::min(text.right, all.right - arrowWidth());
  }
  ExcludeClipRect(context.get(), text.left, text.top, text.right, text.bottom);
  const controls::PaintBuffer buffer({all.right, all.bottom}, controls::sideOf(context.get()));
  controls::Canvas canvas = buffer.canvas();
  canvas.clear(desk().color(Tone::Surface));
  const FieldState state{.isEnabled = control().enabled,
                         .isFocused = GetFocus() == hwnd() || IsChild(hwnd(), GetFocus()) != FALSE,
                         .isHovered = hover || hoverOfText};
  const Rgb edge = desk().color(edgeOf(state));
  canvas.draw(controls::Shape{0, 0, static_cast<double>(all.right), static_cast<double>(all.bottom),
                              0, 1, edge, edge});
  constexpr int arrowLength = 12;
  if (const auto arrow = desk().icon("down", arrowLength, arrowOf(state))) {
    canvas.draw(*arrow, all.right - (arrowWidth() + arrow->width) / 2,
                (all.bottom - arrow->height) / 2);
  }
  buffer.show(context.get(), 0, 0);
}

LRESULT CALLBACK ComboPeer::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR reference) {
  auto* peer = reinterpret_cast<ComboPeer*>(reference);
  if (message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX) {
    return fieldColors(reinterpret_cast<HDC>(wParam), peer->desk());
  }
  const LRESULT result = DefSubclassProc(hwnd, message, wParam, lParam);
  if (peer->hover.follow(hwnd, message)) {
    peer->drawEdge();
  }
  switch (message) {
    case WM_NCDESTROY:
      RemoveWindowSubclass(hwnd, procedure, id);
      break;
    case WM_COMMAND:
      // The text field reports its focus this way.
      InvalidateRect(hwnd, nullptr, FALSE);
      break;
    case WM_PAINT:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE:
      // The class draws its arrow on its own for these.
      peer->drawEdge();
      break;
    default:
      break;
  }
  return result;
}

LRESULT CALLBACK ComboPeer::textProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR id, DWORD_PTR reference) {
  auto* peer = reinterpret_cast<ComboPeer*>(reference);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, textProcedure, id);
  } else if (peer->hoverOfText.follow(hwnd, message)) {
    peer->drawEdge();
  }
  return DefSubclassProc(hwnd, message, wParam, lParam);
}

void ComboPeer::showPlace() {
  // The height of this class includes its open list.
  constexpr int listHeight = 220;
  const int height = desk().fromTwips(control().height);
  SendMessageW(hwnd(), CB_SETITEMHEIGHT, 0, desk().pixels(rowHeight));
  move(desk().fromTwips(control().left), desk().fromTwips(control().top),
       desk().fromTwips(control().width), height + desk().pixels(listHeight));
  // The class adds to the height of the text.
  const auto setTextHeight = [this](LONG text) {
    SendMessageW(hwnd(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), text);
  };
  RECT closed{};
  setTextHeight(height);
  GetWindowRect(hwnd(), &closed);
  setTextHeight(2 * height - (closed.bottom - closed.top));
  placeField();
}

// The class has the texts for screen readers, and to find an entry by its first letters.
void ComboPeer::showRows(Change /*what*/, std::size_t /*row*/) {
  std::vector<std::string> texts;
  for (int position = 0; position < box.count(); ++position) {
    texts.push_back(entryText(position));
  }
  if (texts == shownTexts) {
    return;
  }
  shownTexts = texts;
  SendMessageW(hwnd(), CB_RESETCONTENT, 0, 0);
  for (int position = 0; position < box.count(); ++position) {
    SendMessageW(hwnd(), CB_ADDSTRING, 0,
                 reinterpret_cast<LPARAM>(Wide(entryText(position)).get()));
  }
  showText();
}

// Its font changes with the language.
void ComboPeer::showLook() {
  Peer::showLook();
  placeField();
  if (shownAs) {
    showRows(Change::Rows, 0);
  }
}

void ComboPeer::showText() {
  if (isTyped) {
    return;
  }
  SendMessageW(hwnd(), CB_SETCURSEL, static_cast<WPARAM>(box.listIndex()), 0);
  if (box.comboStyle() == ComboStyle::Editable) {
    SetWindowTextW(hwnd(), Wide(box.text()).get());
  }
}

// While the list is open, an entry that the arrow keys pass is not chosen yet.
void ComboPeer::command(int code) {
  const bool isOpen = SendMessageW(hwnd(), CB_GETDROPPEDSTATE, 0, 0) != FALSE;
  if (code == CBN_SELENDOK || (code == CBN_SELCHANGE && !isOpen)) {
    // What follows from it may change this window, which is not done with closing its list.
    const auto chosen = static_cast<int>(SendMessageW(hwnd(), CB_GETCURSEL, 0, 0));
    desk().later(this, [this, chosen] {
      if (chosen != box.listIndex()) {
        box.setListIndex(chosen);
      }
    });
  } else if (code == CBN_EDITCHANGE) {
    isTyped = true;
    box.setText(typedText(hwnd()));
    isTyped = false;
  }
}

}  // namespace zelvreg::desktop
