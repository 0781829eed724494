#include "desktop/Peer.h"

// This one needs <windows.h> before it.
#include <commctrl.h>

#include <unordered_map>

#include "desktop/Accessible.h"

namespace zelvreg::desktop {
namespace {

// By their windows. A property of the window would cost a call of the system for every message.
std::unordered_map<HWND, Peer*>& peers() {
  static std::unordered_map<HWND, Peer*> all;
  return all;
}

LRESULT CALLBACK borderProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                 DWORD_PTR reference) {
  const LRESULT result = DefSubclassProc(hwnd, message, wParam, lParam);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, borderProcedure, id);
  } else if (message == WM_NCPAINT) {
    RECT place{};
    GetWindowRect(hwnd, &place);
    OffsetRect(&place, -place.left, -place.top);
    HDC context = GetWindowDC(hwnd);
    const Tone tone = GetFocus() == hwnd ? Tone::Mark : Tone::Border;
    FrameRect(context, &place, reinterpret_cast<Desk*>(reference)->brush(tone));
    ReleaseDC(hwnd, context);
  } else if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
    RedrawWindow(hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
  }
  return result;
}

}  // namespace

void colorBorder(HWND window, Desk& desk) {
  constexpr UINT_PTR subclassId = 17;
  SetWindowSubclass(window, borderProcedure, subclassId, reinterpret_cast<DWORD_PTR>(&desk));
}

Peer::Peer(Desk& sharedDesk, Control& shownControl) : shared(sharedDesk), shown(shownControl) {
  shown.attach(this);
}

Peer::~Peer() {
  shown.attach(nullptr);
  shared.forget(this);
  peers().erase(window);
  if (isOwned && IsWindow(window) != FALSE) {
    DestroyWindow(window);
  }
}

void Peer::own(HWND made) {
  borrow(made);
  isOwned = true;
}

void Peer::borrow(HWND made) {
  window = made;
  peers()[window] = this;
  tellFacts(window);
}

Peer* Peer::of(HWND window) {
  const auto found = peers().find(window);
  return found == peers().end() ? nullptr : found->second;
}

void Peer::changed(const Control& /*control*/, Change what, std::size_t row) {
  switch (what) {
    case Change::Text:
      showText();
      break;
    case Change::Look:
      showLook();
      break;
    case Change::Visible:
      showPlace();
      if (!shown.visible) {
        leaveFocus();
      }
      ShowWindow(window, shown.visible ? SW_SHOWNA : SW_HIDE);
      break;
    case Change::Enabled:
      if (!shown.enabled) {
        leaveFocus();
      }
      EnableWindow(window, shown.enabled ? TRUE : FALSE);
      break;
    case Change::Place:
      showPlace();
      break;
    case Change::Value:
      showValue();
      break;
    case Change::Focus:
      SetFocus(window);
      break;
    case Change::Repaint:
      refresh();
      break;
    default:
      showRows(what, row);
      break;
  }
}

// A control that can no longer be used passes the focus on; else the keyboard would have no effect.
void Peer::leaveFocus() const {
  HWND focus = GetFocus();
  if (focus != window && IsChild(window, focus) == FALSE) {
    return;
  }
  HWND root = GetAncestor(window, GA_ROOT);
  HWND next = GetNextDlgTabItem(root, focus, FALSE);
  while (next != nullptr && next != focus && IsChild(window, next) != FALSE) {
    next = GetNextDlgTabItem(root, next, FALSE);
  }
  SetFocus(next == nullptr || next == focus ? root : next);
}

int Peer::lineWidth(const std::u16string& text, HFONT font) const {
  const controls::WindowContext context(window);
  const controls::Selection selected(context.get(), font);
  SIZE extent{};
  GetTextExtentPoint32W(context.get(), wideText(text), static_cast<int>(text.size()), &extent);
  return extent.cx;
}

void Peer::drawFocus(const controls::PaintBuffer& buffer, Tone ground) const {
  if (GetFocus() != window) {
    return;
  }
  constexpr double inset = 0.5;
  const Rgb ring = shared.color(ground == Tone::Accent ? Tone::OnAccent : Tone::Mark);
  buffer.canvas().draw(controls::Shape{inset, inset, buffer.size().width - inset,
                                       buffer.size().height - inset, 3, 1, ring, ring});
}

void Peer::refresh() {
  constexpr DWORD interval = 20;  // milliseconds
  const DWORD now = GetTickCount();
  const bool isDue = now - refreshedAt >= interval && !shared.refreshesLater;
  RedrawWindow(window, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ALLCHILDREN | (isDue ? RDW_UPDATENOW : 0U));
  if (isDue) {
    refreshedAt = now;
  }
}

void Peer::showAll() {
  showLook();
  showPlace();
  showText();
  showValue();
  EnableWindow(window, shown.enabled ? TRUE : FALSE);
  ShowWindow(window, shown.visible ? SW_SHOWNA : SW_HIDE);
}

void Peer::showLook() {
  SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(shared.font(shown.font)), TRUE);
  repaint();
}

void Peer::showPlace() {
  move(shared.fromTwips(shown.left), shared.fromTwips(shown.top), shared.fromTwips(shown.width),
       shared.fromTwips(shown.height));
}

bool Peer::isAt(int left, int top, int width, int height) const {
  RECT place{};
  GetWindowRect(window, &place);
  // Two points are the corners of an area: they change sides in a parent that is laid out from the
  // right.
  MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
  return place.left == left && place.top == top && place.right - left == width &&
         place.bottom - top == height;
}

void Peer::move(int left, int top, int width, int height) const {
  // Most are where they were, and Windows asks each window again before it finds out.
  if (isAt(left, top, width, height)) {
    return;
  }
  // What would be copied there may be turned, or another control may have moved over it.
  SetWindowPos(window, nullptr, left, top, width, height,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER | SWP_NOCOPYBITS);
}

void Peer::moveTo(const Place& place) const {
  move(shared.pixels(place.left), shared.pixels(place.top), shared.pixels(place.width),
       shared.pixels(place.height));
}

std::optional<LRESULT> reflect(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_COMMAND && lParam != 0) {
    if (Peer* peer = Peer::of(reinterpret_cast<HWND>(lParam))) {
      peer->command(HIWORD(wParam));
      return 0;
    }
  }
  if (message == WM_NOTIFY) {
    auto& header = *reinterpret_cast<NMHDR*>(lParam);
    if (Peer* peer = Peer::of(header.hwndFrom)) {
      return peer->notice(header);
    }
  }
  if (message == WM_DRAWITEM) {
    const auto& request = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    const bool isDrawnByPeer = request.CtlType == ODT_STATIC || request.CtlType == ODT_COMBOBOX;
    Peer* peer = isDrawnByPeer ? Peer::of(request.hwndItem) : nullptr;
    if (peer != nullptr) {
      peer->draw(request);
      return TRUE;
    }
  }
  if (message == WM_CTLCOLOREDIT) {
    if (Peer* peer = Peer::of(reinterpret_cast<HWND>(lParam))) {
      return peer->colors(reinterpret_cast<HDC>(wParam));
    }
  }
  return std::nullopt;
}

std::optional<LRESULT> pressByKey(UINT message, WPARAM wParam, LPARAM lParam,
                                  const std::function<void()>& press) {
  if (message == WM_GETDLGCODE) {
    const auto* key = reinterpret_cast<const MSG*>(lParam);
    const bool isEnter = key != nullptr && key->wParam == VK_RETURN;
    return isEnter ? std::optional<LRESULT>(DLGC_WANTMESSAGE) : std::nullopt;
  }
  if (message == WM_KEYDOWN && (wParam == VK_RETURN || wParam == VK_SPACE) && press) {
    press();
    return 0;
  }
  return std::nullopt;
}

bool pressFocusedButton() {
  HWND focus = GetFocus();
  const bool isButton = focus != nullptr && (SendMessageW(focus, WM_GETDLGCODE, 0, 0) &
                                             (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
  if (isButton) {
    SendMessageW(focus, BM_CLICK, 0, 0);
  }
  return isButton;
}

void registerClass(const wchar_t* name, WNDPROC procedure) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hIcon = LoadIconW(description.hInstance, MAKEINTRESOURCEW(1));
  description.lpszClassName = name;
  RegisterClassExW(&description);
}

HWND makeChild(HWND parent, const wchar_t* windowClass, DWORD style, DWORD extendedStyle) {
  return CreateWindowExW(extendedStyle, windowClass, L"", WS_CHILD | WS_CLIPSIBLINGS | style, 0, 0,
                         0, 0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
}

}  // namespace zelvreg::desktop
