// What the main window does when the screen, its resolution or the system's settings change, and
// when the user goes to another program and comes back.
#include <array>
#include <string_view>
#include <utility>

#include "desktop/IconPicture.h"
#include "desktop/MainWindow.h"
#include "desktop/Mirroring.h"
#include "desktop/SystemScreen.h"
#include "form/Form42.h"
#include "shell/ThemeChoice.h"
#include "shell/WindowEvents.h"

namespace zelvreg::desktop {

void MainWindow::showAll() {
  for (const auto& peer : frames) {
    peer->showAll();
  }
  for (const auto& peer : labels) {
    peer->showAll();
  }
  for (const auto& peer : buttons) {
    peer->showAll();
  }
  for (const auto& peer : toolPeers) {
    peer->showAll();
  }
  for (const auto& peer : others) {
    peer->showAll();
  }
}

void MainWindow::changeResolution(int resolution, const RECT* suggested) {
  // Only the form's own start-up puts it into the middle.
  const SIZE room = suggested == nullptr ? roomInTheMiddle() : roomAround(*suggested);
  const int fitting = fittingResolution(resolution, room.cx, room.cy);
  const bool isNew = fitting != desk.resolution();
  desk.setResolution(fitting);
  readScreen();
  if (IsZoomed(window) == FALSE) {
    // The system's rectangle keeps the same place under the mouse; the size is the window's own.
    SetWindowPos(window, nullptr, suggested == nullptr ? 0 : suggested->left,
                 suggested == nullptr ? 0 : suggested->top, desk.fromTwips(form.window.width),
                 desk.fromTwips(form.window.height),
                 SWP_NOZORDER | SWP_NOACTIVATE | (suggested == nullptr ? SWP_NOMOVE : 0));
  } else {
    staysMaximized();
  }
  if (!isNew || outline == nullptr) {
    return;
  }
  showAll();
  arrange();
  outline->Refresh();
  showShadow();
  showIcons();
}

// The system shrinks or stretches an icon of another size, which blurs it. The notification area is
// on the main screen.
void MainWindow::showIcons() {
  constexpr int small = 16;
  constexpr std::array<std::pair<WPARAM, int>, 2> sizes{{{ICON_SMALL, small}, {ICON_BIG, 32}}};
  for (const auto& [kind, length] : sizes) {
    const int pixels = desk.pixels(length);
    controls::IconHandle icon(
        static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON,
                                      pixels, pixels, LR_DEFAULTCOLOR)));
    SendMessageW(window, WM_SETICON, kind, reinterpret_cast<LPARAM>(icon.get()));
    icons[kind] = std::move(icon);
  }
  constexpr std::string_view emblem = "emblem";
  tray.area().setIcon(iconPicture({.key = emblem,
                                   .pixels = MulDiv(small, resolutionOfMainScreen(), 96),
                                   .color = desk.color(toneOfIcon(emblem))}));
}

void MainWindow::changeLanguage() {
  desk.isMirrored = form.readsFromRight;
  mirror(window, desk.isMirrored);
  showAll();
  arrange();
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME);
}

Theme MainWindow::themeInUse() const { return isDarkWanted(form) ? Theme::Dark : Theme::Light; }

void MainWindow::changeSettings() {
  desk.readColors(themeInUse());
  readScreen();
  showAll();
  showColor();
  arrangeLater();
}

void MainWindow::renewTrayIcon() {
  if (tray.area().visible()) {
    tray.area().setVisible(false);
    tray.area().setVisible(true);
  }
}

void MainWindow::activate(bool isActive) {
  if (!isActive) {
    lastFocus = GetFocus();
    return;
  }
  if (IsWindowVisible(window) == FALSE) {
    return;
  }
  tray.area().setVisible(form.TrayArea1.visible);
  Form_Activate(form);
  const bool canTakeIt = IsChild(window, lastFocus) != FALSE &&
                         IsWindowVisible(lastFocus) != FALSE && IsWindowEnabled(lastFocus) != FALSE;
  const ButtonPeer* start = peerOf(form.cmd_start);
  if (canTakeIt) {
    SetFocus(lastFocus);
  } else if (start != nullptr && form.cmd_start.enabled) {
    SetFocus(start->hwnd());
  } else {
    SetFocus(window);
  }
}

}  // namespace zelvreg::desktop
