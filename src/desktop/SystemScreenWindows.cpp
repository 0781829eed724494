#include "desktop/SystemScreen.h"

#include <algorithm>
#include <cstdlib>

#include "controls/PaintBuffer.h"

namespace zelvreg::desktop {
namespace {

// A call that only newer systems have, or null.
template <class Call>
Call callOfUser32(const char* name) {
  return reinterpret_cast<Call>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

}  // namespace

int resolutionOfSystem() {
  const controls::WindowContext screen(nullptr);
  return GetDeviceCaps(screen.get(), LOGPIXELSX);
}

int resolutionOf(HWND window) {
  const auto ask = callOfUser32<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
  const UINT told = ask == nullptr ? 0 : ask(window);
  return told == 0 ? resolutionOfSystem() : static_cast<int>(told);
}

SIZE screenSize() { return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}; }

SIZE roomInTheMiddle() {
  RECT area{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  const SIZE screen = screenSize();
  // A taskbar on one side takes as much from the other side, because the window is centered.
  const auto bars = [](LONG before, LONG after) {
    return std::abs(std::max<LONG>(0, before) - std::max<LONG>(0, after));
  };
  return {area.right - area.left - bars(area.left, screen.cx - area.right),
          area.bottom - area.top - bars(area.top, screen.cy - area.bottom)};
}

ScreenAreas areasAround(HWND window) {
  MONITORINFO told{};
  told.cbSize = sizeof told;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &told);
  return {told.rcMonitor, told.rcWork};
}

void letThrough(HWND window, UINT message) {
  constexpr DWORD allow = 1;
  const auto change =
      callOfUser32<BOOL(WINAPI*)(HWND, UINT, DWORD, void*)>("ChangeWindowMessageFilterEx");
  if (change != nullptr) {
    change(window, message, allow, nullptr);
  }
}

}  // namespace zelvreg::desktop
