#include <windows.h>

// This one needs <windows.h> before it.
#include <commctrl.h>

#include <algorithm>

#include "controls/PaintBuffer.h"
#include "desktop/Peer.h"
#include "desktop/ScrollCover.h"

namespace zelvreg::desktop {
namespace {

constexpr const wchar_t* coverClass = L"ZelvregScrollBar";
constexpr UINT_PTR pageTimer = 1;
constexpr int shortestThumb = 28;
constexpr int thumbWidth = 7;

}  // namespace

ScrollCover::ScrollCover(Desk& sharedDesk, HWND coveredList, ScrollSide coveredSide)
    : desk(sharedDesk), list(coveredList), side(coveredSide) {
  registerClass(coverClass, procedure);
  window = makeChild(GetParent(list), coverClass, 0);
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

ScrollCover::~ScrollCover() {
  if (IsWindow(window) != FALSE) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    DestroyWindow(window);
  }
}

void ScrollCover::follow() {
  SCROLLBARINFO bar{};
  bar.cbSize = sizeof bar;
  const LONG object = isUpright() ? OBJID_VSCROLL : OBJID_HSCROLL;
  const bool isThere = IsWindowVisible(list) != FALSE &&
                       GetScrollBarInfo(list, object, &bar) != FALSE &&
                       (bar.rgstate[0] & (STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN)) == 0 &&
                       bar.rcScrollBar.right > bar.rcScrollBar.left;
  if (!isThere) {
    ShowWindow(window, SW_HIDE);
    return;
  }
  // At the end of the list, which is the left one where the window is laid out from the right.
  RECT place = bar.rcScrollBar;
  RECT whole{};
  GetWindowRect(list, &whole);
  MapWindowPoints(nullptr, GetParent(list), reinterpret_cast<POINT*>(&place), 2);
  MapWindowPoints(nullptr, GetParent(list), reinterpret_cast<POINT*>(&whole), 2);
  constexpr int border = 1;
  const LONG width = place.right - place.left;
  place.left = isUpright() ? whole.right - border - width : whole.left + border;
  place.right = place.left + width;
  SetWindowPos(window, HWND_TOP, place.left, place.top, place.right - place.left,
               place.bottom - place.top,
               SWP_NOACTIVATE | SWP_SHOWWINDOW | SWP_NOOWNERZORDER |
                   (desk.isMirrored ? SWP_NOCOPYBITS : 0U));
  if (const ScrollRange now = rangeNow(); now != shown) {
    shown = now;
    repaint();
  }
}

ScrollRange ScrollCover::rangeNow() const {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  GetScrollInfo(list, isUpright() ? SB_VERT : SB_HORZ, &info);
  return {info.nMin, info.nMax, static_cast<int>(info.nPage), info.nPos};
}

int ScrollCover::track() const {
  RECT place{};
  GetClientRect(window, &place);
  return isUpright() ? place.bottom : place.right;
}

int ScrollCover::least() const { return desk.pixels(shortestThumb); }

ThumbPlace ScrollCover::thumb() const { return thumbOf(shown, track(), least()); }

int ScrollCover::along(LPARAM where) const {
  return static_cast<short>(isUpright() ? HIWORD(where) : LOWORD(where));
}

void ScrollCover::paint() {
  PAINTSTRUCT request{};
  HDC context = BeginPaint(window, &request);
  RECT place{};
  GetClientRect(window, &place);
  const controls::PaintBuffer buffer({place.right, place.bottom}, controls::sideOf(context));
  controls::Canvas canvas = buffer.canvas();
  canvas.clear(desk.color(Tone::Surface));
  const auto [start, length] = thumb();
  const int across = isUpright() ? place.right : place.bottom;
  const double width = std::min(desk.pixels(thumbWidth), across);
  const double inset = (across - width) / 2;
  const double from = start + inset;
  const double to = start + length - inset;
  const Rgb color = desk.color(isHovered || held >= 0 ? Tone::Secondary : Tone::MarkEdge);
  canvas.draw(isUpright()
                  ? controls::Shape{inset, from, inset + width, to, width / 2, 0, color, color}
                  : controls::Shape{from, inset, to, inset + width, width / 2, 0, color, color});
  buffer.show(context, 0, 0);
  EndPaint(window, &request);
}

void ScrollCover::seize(int at) {
  SetCapture(window);
  const auto [start, length] = thumb();
  if (at >= start && at < start + length) {
    held = at - start;
    repaint();
    return;
  }
  pagedAt = at;
  page();
  constexpr UINT untilNextPage = 250;  // milliseconds
  SetTimer(window, pageTimer, untilNextPage, nullptr);
}

void ScrollCover::drag(int at) {
  if (held >= 0) {
    scrollTo(positionOfThumb(shown, track(), least(), at - held));
  }
}

void ScrollCover::release() {
  KillTimer(window, pageTimer);
  held = -1;
  repaint();
}

// Towards the place that is pressed, until the thumb is there.
void ScrollCover::page() {
  const auto [start, length] = thumb();
  if (pagedAt >= start && pagedAt < start + length) {
    return;
  }
  const WPARAM direction = pagedAt < start ? SB_PAGEUP : SB_PAGEDOWN;
  SendMessageW(list, isUpright() ? WM_VSCROLL : WM_HSCROLL, direction, 0);
  follow();
}

// A list scrolls by pixels; upright it counts in lines.
void ScrollCover::scrollTo(int position) {
  const int by = position - shown.position;
  if (by == 0) {
    return;
  }
  RECT line{};
  line.left = LVIR_BOUNDS;
  const bool hasLine = SendMessageW(list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&line)) != 0;
  const int height = hasLine ? line.bottom - line.top : 1;
  SendMessageW(list, LVM_SCROLL, static_cast<WPARAM>(isUpright() ? 0 : by),
               isUpright() ? static_cast<LPARAM>(by) * height : 0);
  follow();
}

void ScrollCover::setHovered(bool is) {
  if (isHovered == is) {
    return;
  }
  isHovered = is;
  repaint();
  if (is) {
    TRACKMOUSEEVENT leave{};
    leave.cbSize = sizeof leave;
    leave.dwFlags = TME_LEAVE;
    leave.hwndTrack = window;
    TrackMouseEvent(&leave);
  }
}

LRESULT CALLBACK ScrollCover::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<ScrollCover*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  return self == nullptr || self->window == nullptr ? DefWindowProcW(hwnd, message, wParam, lParam)
                                                    : self->handle(message, wParam, lParam);
}

LRESULT ScrollCover::handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ERASEBKGND:
      return TRUE;
    case WM_PAINT:
      paint();
      return 0;
    case WM_LBUTTONDOWN:
      seize(along(lParam));
      return 0;
    case WM_MOUSEMOVE:
      setHovered(true);
      drag(along(lParam));
      return 0;
    case WM_MOUSELEAVE:
      setHovered(false);
      return 0;
    case WM_LBUTTONUP:
      ReleaseCapture();
      return 0;
    case WM_CAPTURECHANGED:
      release();
      return 0;
    case WM_TIMER:
      page();
      return 0;
    case WM_MOUSEWHEEL:
      return SendMessageW(list, message, wParam, lParam);
    default:
      return DefWindowProcW(window, message, wParam, lParam);
  }
}

}  // namespace zelvreg::desktop
