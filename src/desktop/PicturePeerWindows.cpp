#include "desktop/PicturePeer.h"

// This one needs <windows.h> before it.
#include <commctrl.h>

#include <algorithm>

#include "controls/PaintBuffer.h"

namespace zelvreg::desktop {
namespace {

constexpr UINT_PTR subclassId = 1;
constexpr UINT_PTR frameTimer = 1;

}  // namespace

PicturePeer::PicturePeer(Desk& sharedDesk, HWND parent, Picture& shownPicture,
                         PictureOptions pictureOptions)
    : Peer(sharedDesk, shownPicture), picture(shownPicture), options(pictureOptions) {
  const DWORD stop = options.canBePressed ? WS_TABSTOP : 0;
  own(makeChild(parent, L"STATIC", SS_OWNERDRAW | SS_NOTIFY | stop));
  SetWindowSubclass(hwnd(), procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
  showAll();
}

void PicturePeer::setName(std::function<std::string()> name) {
  nameOf = std::move(name);
  SetWindowTextW(hwnd(), Wide(nameOf()).get());
}

void PicturePeer::showLook() {
  const std::string& file = picture.file.get();
  if (file != loadedFile) {
    loadedFile = file;
    animation = readAnimation(file);
    frame = 0;
    if (!animation.empty()) {
      SetTimer(hwnd(), frameTimer, animation.front().milliseconds, nullptr);
    }
  }
  repaint();
}

void PicturePeer::nextFrame() {
  if (picture.visible && !animation.empty()) {
    frame = (frame + 1) % animation.size();
    SetTimer(hwnd(), frameTimer, animation[frame].milliseconds, nullptr);
    repaint();
  }
}

void PicturePeer::draw(const DRAWITEMSTRUCT& request) {
  const int width = request.rcItem.right;
  const int height = request.rcItem.bottom;
  const controls::PaintBuffer buffer({width, height}, controls::sideOf(request.hDC));
  controls::Canvas canvas = buffer.canvas();
  canvas.clear(desk().color(options.ground));
  if (options.hasDisc) {
    const double length = std::min(width, height);
    const Rgb disc = desk().color(options.disc);
    canvas.draw(controls::Shape{0, 0, length, length, length / 2, 0, disc, disc});
  }
  if (!animation.empty()) {
    const controls::Bitmap& whole = animation[frame].picture;
    if (whole.width == width && whole.height == height) {
      canvas.draw(whole, 0, 0);
    } else {
      canvas.draw(resized(whole, {width, height}), 0, 0);
    }
  } else if (const auto icon =
                 desk().icon(iconOf ? iconOf() : options.icon, options.length, options.tone)) {
    canvas.draw(*icon, (width - icon->width) / 2, (height - icon->height) / 2);
  }
  drawFocus(buffer, options.ground);
  buffer.show(request.hDC, request.rcItem.left, request.rcItem.top);
}

LRESULT CALLBACK PicturePeer::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                        UINT_PTR id, DWORD_PTR reference) {
  auto* peer = reinterpret_cast<PicturePeer*>(reference);
  if (peer->onClick) {
    if (const auto answer = pressByKey(message, wParam, lParam, peer->onClick)) {
      return *answer;
    }
  }
  switch (message) {
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      peer->repaint();
      break;
    case WM_NCDESTROY:
      RemoveWindowSubclass(hwnd, procedure, id);
      break;
    case WM_NCHITTEST:
      if (!peer->onClick) {
        return HTTRANSPARENT;
      }
      break;
    case WM_SETCURSOR:
      SetCursor(LoadCursorW(nullptr, IDC_HAND));
      return TRUE;
    case WM_LBUTTONUP:
      if (peer->onClick) {
        peer->onClick();
      }
      return 0;
    case WM_TIMER:
      peer->nextFrame();
      return 0;
    default:
      break;
  }
  return DefSubclassProc(hwnd, message, wParam, lParam);
}

}  // namespace zelvreg::desktop
