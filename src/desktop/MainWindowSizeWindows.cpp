// How the user gives the main window its size and place, and what it remembers of them.
#include <algorithm>
#include <utility>

// This one needs <windows.h> before it.
#include <windowsx.h>

#include "controls/modShadow.h"
#include "desktop/MainWindow.h"
#include "desktop/SystemScreen.h"
#include "form/Form42.h"
#include "shell/WindowEvents.h"
#include "shell/WindowMemory.h"

namespace zelvreg::desktop {
namespace {

// In pixels at 96 dpi.
constexpr int edgeReach = 6;
constexpr int gripLength = 18;

LRESULT hitOf(Edge edge) { return HTLEFT - 1 + static_cast<LRESULT>(edge); }

Edge edgeOf(WPARAM hit) {
  return hit >= HTLEFT && hit <= HTBOTTOMRIGHT ? static_cast<Edge>(hit - HTLEFT + 1) : Edge::None;
}

}  // namespace

// Of the window, at the resolution in use.
Place MainWindow::leastPlace() const {
  return {0, 0, desk.pixels(windowWidth), desk.pixels(windowHeight)};
}

void MainWindow::placeAt(const Place& place) {
  SetWindowPos(window, nullptr, place.left, place.top, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

std::optional<LRESULT> MainWindow::handleSize(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_NCHITTEST:
      return hitAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
    case WM_NCLBUTTONDOWN:
      if (edgeOf(wParam) != Edge::None) {
        seizeEdge(edgeOf(wParam), {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return 0;
      }
      return isClickOnTitle(wParam, lParam) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_NCLBUTTONDBLCLK:
      if (wParam == HTCAPTION) {
        form.MaximizeButton.click();
        return 0;
      }
      return std::nullopt;
    case WM_MOUSEMOVE:
      dragEdge();
      return std::nullopt;
    case WM_LBUTTONUP:
      if (seized.edge != Edge::None) {
        dragEdge();
        ReleaseCapture();
      }
      return std::nullopt;
    case WM_CAPTURECHANGED:
      if (seized.edge != Edge::None) {
        seized.edge = Edge::None;
        keepPlace();
      }
      return std::nullopt;
    case WM_EXITSIZEMOVE:
      keepPlace();
      return std::nullopt;
    case WM_GETMINMAXINFO:
      limitSize(*reinterpret_cast<MINMAXINFO*>(lParam));
      return 0;
    case WM_SIZE:
      sizeChanged(wParam);
      return 0;
    default:
      return std::nullopt;
  }
}

LRESULT MainWindow::hitAt(POINT onScreen) const {
  const Place place = placeOf(window);
  const Point point{onScreen.x - place.left, onScreen.y - place.top};
  const Edge edge = IsZoomed(window) != FALSE
                        ? Edge::None
                        : edgeAt(point, place.width, place.height, desk.pixels(edgeReach),
                                 desk.pixels(gripLength));
  if (edge != Edge::None) {
    return hitOf(edge);
  }
  return point.y < desk.pixels(titleHeight) ? HTCAPTION : HTCLIENT;
}

// A drag of the system would swallow the second press of a double click, so it begins only once the
// mouse moves.
bool MainWindow::isClickOnTitle(WPARAM hit, LPARAM onScreen) const {
  return hit == HTCAPTION && GetKeyState(VK_LBUTTON) < 0 &&
         DragDetect(window, {GET_X_LPARAM(onScreen), GET_Y_LPARAM(onScreen)}) == FALSE;
}

// The system drags only edges of frames of its own. The mouse may be elsewhere by now.
void MainWindow::seizeEdge(Edge edge, POINT pressed) {
  SetCapture(window);
  seized = {.edge = edge, .start = placeOf(window), .from = pressed};
}

void MainWindow::dragEdge() {
  if (seized.edge == Edge::None) {
    return;
  }
  POINT at{};
  GetCursorPos(&at);
  placeAt(draggedBy(seized.start, seized.edge, {at.x - seized.from.x, at.y - seized.from.y},
                    leastPlace()));
}

// A maximized window leaves the taskbar free.
void MainWindow::limitSize(MINMAXINFO& limits) const {
  const ScreenAreas areas = areasAround(window);
  limits.ptMaxPosition = {areas.work.left - areas.whole.left, areas.work.top - areas.whole.top};
  limits.ptMaxSize = {areas.work.right - areas.work.left, areas.work.bottom - areas.work.top};
  const Place least = leastPlace();
  limits.ptMinTrackSize = {least.width, least.height};
  limits.ptMaxTrackSize.x = std::max(limits.ptMaxTrackSize.x, limits.ptMaxSize.x);
  limits.ptMaxTrackSize.y = std::max(limits.ptMaxTrackSize.y, limits.ptMaxSize.y);
}

void MainWindow::sizeChanged(WPARAM kind) {
  if (kind == SIZE_MINIMIZED) {
    form.window.windowState = WindowState::Minimized;
    Form_Resize(form);
    return;
  }
  // While the window is made, nothing is in it.
  if (outline == nullptr) {
    return;
  }
  RECT client{};
  GetClientRect(window, &client);
  isTelling = true;
  // What was rounded at another resolution is not rounded again.
  if (desk.fromTwips(form.window.width) != client.right ||
      desk.fromTwips(form.window.height) != client.bottom) {
    form.window.width = desk.toTwips(client.right);
    form.window.height = desk.toTwips(client.bottom);
  }
  const bool isMaximized = kind == SIZE_MAXIMIZED;
  form.window.windowState = isMaximized ? WindowState::Maximized : WindowState::Normal;
  isTelling = false;
  followSize(form);
  arrange();
  outline->Refresh();
  if (std::exchange(looksMaximized, isMaximized) != isMaximized) {
    showMaximized();
  }
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void MainWindow::showMaximized() {
  showShadow();
  peerOf(form.MaximizeButton)->setIcon(IsZoomed(window) == FALSE ? "maximize" : "restore");
  keepPlace();
}

void MainWindow::nameMaximize() {
  form.MaximizeButton.toolTip.renew(IsZoomed(window) == FALSE ? textOf(form, "name-maximize")
                                                              : textOf(form, "name-restore"));
}

void MainWindow::showShadow() {
  if (IsZoomed(window) == FALSE) {
    desk.castShadow(window, form.shadow);
  } else {
    controls::modShadow::destroy(window);
  }
}

// Called when the window is first shown. The form itself has put it into the middle of the screen.
void MainWindow::restorePlace() {
  hasOpened = true;
  const auto known = readWindowMemory();
  if (!known) {
    notePlace();
    return;
  }
  // On a screen with another resolution the window first takes that over.
  SetWindowPos(window, nullptr, known->left, known->top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  const Place wanted{known->left, known->top, desk.pixels(known->width),
                     desk.pixels(known->height)};
  placeAt(placeInside(wanted, placeOf(areasAround(window).work), leastPlace()));
  notePlace();
  if (known->isMaximized) {
    ShowWindow(window, SW_MAXIMIZE);
  }
}

// The screens have changed, and the window may be where none is any more.
void MainWindow::returnToScreen() {
  if (hasOpened && IsZoomed(window) == FALSE && IsIconic(window) == FALSE) {
    placeAt(placeInside(placeOf(window), placeOf(areasAround(window).work), leastPlace()));
  }
}

void MainWindow::staysMaximized() {
  const RECT area = areasAround(window).work;
  placeAt(placeOf(area));
  sizeChanged(SIZE_MAXIMIZED);
  // The place that it goes back to.
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  GetWindowPlacement(window, &placement);
  RECT& normal = placement.rcNormalPosition;
  normal.right = normal.left + desk.pixels(memory.width);
  normal.bottom = normal.top + desk.pixels(memory.height);
  SetWindowPlacement(window, &placement);
}

void MainWindow::notePlace() {
  const Place place = placeOf(window);
  memory.left = place.left;
  memory.top = place.top;
  memory.width = desk.fromPixels(place.width);
  memory.height = desk.fromPixels(place.height);
}

// Of a maximized window, the place that it would go back to.
void MainWindow::keepPlace() {
  if (!hasOpened || IsIconic(window) != FALSE) {
    return;
  }
  memory.isMaximized = IsZoomed(window) != FALSE;
  if (!memory.isMaximized) {
    notePlace();
  }
  keepWindowMemory(memory);
}

}  // namespace zelvreg::desktop
