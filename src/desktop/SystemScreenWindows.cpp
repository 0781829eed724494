#include "desktop/SystemScreen.h"

#include <algorithm>
#include <cstdlib>

#include "controls/PaintBuffer.h"
#include "libraries/SystemLibrary.h"

namespace zelvreg::desktop {
namespace {

constexpr const wchar_t* user32 = L"user32.dll";

// Since Windows 8.1; before that all screens have the resolution of the system.
int resolutionOf(HMONITOR screen) {
  using Ask = HRESULT WINAPI(HMONITOR, int, UINT*, UINT*);
  static const auto ask = systemFunction<Ask>(L"shcore.dll", "GetDpiForMonitor");
  constexpr int effective = 0;
  UINT across = 0;
  UINT down = 0;
  const bool isTold = ask != nullptr && SUCCEEDED(ask(screen, effective, &across, &down));
  return isTold ? static_cast<int>(across) : resolutionOfSystem();
}

MONITORINFO factsOf(HMONITOR screen) {
  MONITORINFO told{};
  told.cbSize = sizeof told;
  GetMonitorInfoW(screen, &told);
  return told;
}

}  // namespace

int resolutionOfSystem() {
  const controls::WindowContext screen(nullptr);
  return GetDeviceCaps(screen.get(), LOGPIXELSX);
}

int resolutionOf(HWND window) {
  static const auto ask = systemFunction<UINT WINAPI(HWND)>(user32, "GetDpiForWindow");
  const UINT told = ask == nullptr ? 0 : ask(window);
  return told == 0 ? resolutionOf(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST))
                   : static_cast<int>(told);
}

int resolutionOfMainScreen() {
  return resolutionOf(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY));
}

int scrollBarWidth(HWND window) {
  static const auto ask = systemFunction<int WINAPI(int, UINT)>(user32, "GetSystemMetricsForDpi");
  return ask == nullptr ? GetSystemMetrics(SM_CXVSCROLL)
                        : ask(SM_CXVSCROLL, static_cast<UINT>(resolutionOf(window)));
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

SIZE roomAround(const RECT& place) {
  const MONITORINFO told = factsOf(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST));
  if ((told.dwFlags & MONITORINFOF_PRIMARY) != 0) {
    return roomInTheMiddle();
  }
  return {told.rcWork.right - told.rcWork.left, told.rcWork.bottom - told.rcWork.top};
}

ScreenAreas areasAround(HWND window) {
  const MONITORINFO told = factsOf(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST));
  return {told.rcMonitor, told.rcWork};
}

Place placeOf(const RECT& rectangle) {
  return {rectangle.left, rectangle.top, rectangle.right - rectangle.left,
          rectangle.bottom - rectangle.top};
}

Place placeOf(HWND window) {
  RECT rectangle{};
  GetWindowRect(window, &rectangle);
  return placeOf(rectangle);
}

void letThrough(HWND window, UINT message) {
  constexpr DWORD allow = 1;
  const auto change =
      systemFunction<BOOL WINAPI(HWND, UINT, DWORD, void*)>(user32, "ChangeWindowMessageFilterEx");
  if (change != nullptr) {
    change(window, message, allow, nullptr);
  }
}

}  // namespace zelvreg::desktop
