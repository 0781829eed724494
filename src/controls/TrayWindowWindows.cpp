#include "controls/TrayWindow.h"

// This one needs <windows.h> before it.
#include <shellapi.h>

#include <commctrl.h>

#include <cstring>

#include "controls/GdiObjects.h"
#include "controls/PaintBuffer.h"
#include "controls/Units.h"
#include "unicode/Unicode.h"

namespace zelvreg::controls {
namespace {

static_assert(sizeof(TrayRecord) == NOTIFYICONDATAW_V1_SIZE);

double twipsPerPixel() {
  const WindowContext screen(nullptr);
  return 1440.0 / GetDeviceCaps(screen.get(), LOGPIXELSX);
}

}  // namespace

TrayWindow::TrayWindow(bool userMode)
    : receiver(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                               GetModuleHandleW(nullptr), nullptr)),
      random(GetTickCount()),
      control(*this, userMode) {
  SetWindowSubclass(receiver, procedure, 1, reinterpret_cast<DWORD_PTR>(this));
}

TrayWindow::~TrayWindow() {
  control.setVisible(false);
  DestroyWindow(receiver);
  if (shown != nullptr) {
    DestroyIcon(shown);
  }
}

LRESULT CALLBACK TrayWindow::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR id, DWORD_PTR reference) {
  if (message == trayCallback && LOWORD(lParam) == NIN_BALLOONUSERCLICK) {
    const auto* tray = reinterpret_cast<const TrayWindow*>(reference);
    if (tray->onNoticeClick) {
      tray->onNoticeClick();
    }
    return 0;
  }
  if (message == trayCallback) {
    // The message number is where a mouse move has its X position.
    const double twips = twipsPerPixel();
    const auto* tray = reinterpret_cast<const TrayWindow*>(reference);
    tray->control.mouseMoved(static_cast<short>(LOWORD(lParam)) * twips, twips);
    return 0;
  }
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, procedure, id);
  }
  return DefSubclassProc(hwnd, message, wParam, lParam);
}

void TrayWindow::notify(TrayCall call, const TrayRecord& record) {
  standing = record;
  NOTIFYICONDATAW data{};
  std::memcpy(&data, &record, sizeof record);
  Shell_NotifyIconW(static_cast<DWORD>(call), &data);
}

void TrayWindow::showNotice(const std::string& title, const std::string& text) {
  if (!control.isShown()) {
    return;
  }
  NOTIFYICONDATAW data{};
  std::memcpy(&data, &standing, sizeof standing);
  data.cbSize = sizeof data;
  data.uFlags = NIF_INFO;
  data.dwInfoFlags = NIIF_INFO;
  copyUnits(utf16(title), data.szInfoTitle);
  copyUnits(utf16(text), data.szInfo);
  Shell_NotifyIconW(NIM_MODIFY, &data);
}

std::uint32_t TrayWindow::window() { return reinterpret_cast<std::uintptr_t>(receiver); }

std::uint32_t TrayWindow::icon(const Picture& picture) {
  HICON old = shown;
  shown = makeIcon(*picture);
  if (old != nullptr) {
    DestroyIcon(old);
  }
  return reinterpret_cast<std::uintptr_t>(shown);
}

double TrayWindow::randomFraction() {
  return static_cast<double>(random() - std::minstd_rand::min()) /
         (static_cast<double>(std::minstd_rand::max()) - std::minstd_rand::min() + 1);
}

}  // namespace zelvreg::controls
