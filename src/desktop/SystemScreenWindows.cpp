#include "desktop/SystemScreen.h"

#include "controls/PaintBuffer.h"

namespace zelvreg::desktop {
namespace {

// A call that only newer systems have, or null.
template <class Call>
Call callOfUser32(const char* name) {
  return reinterpret_cast<Call>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("user32.dll"), name)));
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

RECT workArea() {
  RECT area{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  return area;
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
