#include "controls/modShadow.h"

#include <commctrl.h>

#include <cstring>

#include "controls/PaintBuffer.h"

namespace zelvreg::controls::modShadow {
namespace {

constexpr const wchar_t* shadowProperty = L"TrickShadow";
constexpr const wchar_t* shadowClass = L"TrickShadow";
constexpr UINT_PTR subclassId = 1;

constexpr DWORD layeredTransparentTool = 0x800A0;
constexpr DWORD popUp = 0x80000000;
constexpr UINT withoutActivation = 0x10;
// Its size and the order of its owner's windows do not change either.
constexpr UINT movedOnly = 0x211;
constexpr DWORD alphaOfPixels = 2;

enum Setting : int { sizeAt = 0, colorAt = 4, strengthAt = 8, dropAt = 12 };
constexpr int settingBytes = 16;

void registerClass() {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.cbWndExtra = settingBytes;
  const FARPROC procedure = GetProcAddress(GetModuleHandleW(L"user32"), "DefWindowProcW");
  static_assert(sizeof description.lpfnWndProc == sizeof procedure);
  std::memcpy(&description.lpfnWndProc, &procedure, sizeof procedure);
  description.hInstance = GetModuleHandleW(nullptr);
  description.lpszClassName = shadowClass;
  // If the class already exists, this call has no effect.
  RegisterClassExW(&description);
}

void store(HWND shadow, const ShadowSettings& settings) {
  SetWindowLongW(shadow, sizeAt, settings.size);
  SetWindowLongW(shadow, colorAt, static_cast<LONG>(settings.color));
  SetWindowLongW(shadow, strengthAt, settings.strength);
  SetWindowLongW(shadow, dropAt, settings.drop);
}

Rectangle placeOf(HWND target, const ShadowSettings& settings) {
  RECT window{};
  GetWindowRect(target, &window);
  return shadowPlace({static_cast<int>(window.left), static_cast<int>(window.top),
                      static_cast<int>(window.right), static_cast<int>(window.bottom)},
                     settings);
}

// A strip of one pixel's width or height, stretched along an edge of the section.
void stretchEdge(HDC dc, const Rectangle& edge, Size strip, const std::uint32_t* pixels) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = strip.width;
  info.bmiHeader.biHeight = -strip.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  StretchDIBits(dc, edge.left, edge.top, edge.width(), edge.height(), 0, 0, strip.width,
                strip.height, pixels, &info, DIB_RGB_COLORS, SRCCOPY);
}

Bitmap mirrored(const Bitmap& corner, bool isAcross, bool isDown) {
  Bitmap result(corner.width, corner.height);
  std::size_t index = 0;
  for (int row = 0; row < corner.height; ++row) {
    for (int column = 0; column < corner.width; ++column) {
      result.pixels[index++] = corner.at(isAcross ? corner.width - 1 - column : column,
                                         isDown ? corner.height - 1 - row : row);
    }
  }
  return result;
}

void drawShadow(const PaintBuffer& buffer, const ShadowSettings& settings) {
  const Size whole = buffer.size();
  const int size = settings.size;
  const Bitmap corner = shadowCorner(settings);
  std::vector<std::uint32_t> rising;
  for (int step = 0; step < size; ++step) {
    rising.push_back(corner.at(size - 1, step));
  }
  const std::vector<std::uint32_t> falling(rising.rbegin(), rising.rend());
  const int right = whole.width - size;
  const int bottom = whole.height - size;
  stretchEdge(buffer.dc(), {size, 0, right, size}, {1, size}, rising.data());
  stretchEdge(buffer.dc(), {size, bottom, right, whole.height}, {1, size}, falling.data());
  stretchEdge(buffer.dc(), {0, size, size, bottom}, {size, 1}, rising.data());
  stretchEdge(buffer.dc(), {right, size, whole.width, bottom}, {size, 1}, falling.data());
  // Under the window. It is visible where the shadow is moved down, and at round corners.
  const std::uint32_t inner = shadowPixel(shadowAlpha(0, settings), settings);
  stretchEdge(buffer.dc(), {size, size, right, bottom}, {1, 1}, &inner);
  Canvas canvas = buffer.canvas();
  canvas.draw(corner, 0, 0);
  canvas.draw(mirrored(corner, true, false), right, 0);
  canvas.draw(mirrored(corner, false, true), 0, bottom);
  canvas.draw(mirrored(corner, true, true), right, bottom);
}

// No shadow where the window itself is: not every window system keeps the shadow below it.
void cutOut(HDC dc, HWND target, const ShadowSettings& settings) {
  RECT window{};
  GetWindowRect(target, &window);
  const RegionHandle hole(
      CreateRectRgn(0, 0, window.right - window.left, window.bottom - window.top));
  const RegionHandle outline(CreateRectRgn(0, 0, 0, 0));
  if (GetWindowRgn(target, outline.get()) > NULLREGION) {
    CombineRgn(hole.get(), outline.get(), nullptr, RGN_COPY);
  }
  OffsetRgn(hole.get(), settings.size, settings.size - settings.drop);
  // Black without alpha.
  FillRgn(dc, hole.get(), static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
}

void redraw(HWND target, HWND shadow, const ShadowSettings& settings) {
  const Rectangle place = placeOf(target, settings);
  const PaintBuffer buffer({place.width(), place.height()});
  if (settings.size > 0) {
    drawShadow(buffer, settings);
    cutOut(buffer.dc(), target, settings);
  }
  SetWindowPos(shadow, target, place.left, place.top, place.width(), place.height(),
               withoutActivation);
  POINT source{0, 0};
  SIZE extent{buffer.size().width, buffer.size().height};
  BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  GdiFlush();
  UpdateLayeredWindow(shadow, nullptr, nullptr, &extent, buffer.dc(), &source, 0, &blend,
                      alphaOfPixels);
  store(shadow, settings);
}

// Whether the user works in another program, as the subclass of the target remembers.
bool isAway(HWND target);

void follow(HWND target, HWND shadow) {
  if (IsWindowVisible(target) == 0 || IsIconic(target) != 0 || isAway(target)) {
    ShowWindow(shadow, SW_HIDE);
    return;
  }
  const Rectangle place = placeOf(target, settingsOf(shadow));
  // Shown in the same step: a window that is only shown comes to the front.
  const UINT show = IsWindowVisible(shadow) == 0 ? SWP_SHOWWINDOW : 0;
  SetWindowPos(shadow, target, place.left, place.top, 0, 0, movedOnly | show);
}

LRESULT CALLBACK procedure(HWND target, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                           DWORD_PTR) {
  if (message == WM_NCDESTROY) {
    destroy(target);
    return DefSubclassProc(target, message, wParam, lParam);
  }
  const LRESULT result = DefSubclassProc(target, message, wParam, lParam);
  HWND shadow = shadowOf(target);
  if (shadow == nullptr) {
    return result;
  }
  if (message == WM_WINDOWPOSCHANGED) {
    const auto* change = reinterpret_cast<const WINDOWPOS*>(lParam);
    // A new outline comes as a new frame.
    if ((change->flags & SWP_NOSIZE) == 0 || (change->flags & SWP_FRAMECHANGED) != 0) {
      redraw(target, shadow, settingsOf(shadow));
    }
    follow(target, shadow);
  } else if (message == WM_ACTIVATEAPP) {
    SetWindowSubclass(target, procedure, subclassId, wParam == FALSE ? 1 : 0);
    follow(target, shadow);
  } else if (message == WM_SHOWWINDOW || message == WM_MOVE || message == WM_ACTIVATE) {
    follow(target, shadow);
  }
  return result;
}

bool isAway(HWND target) {
  DWORD_PTR away = 0;
  return GetWindowSubclass(target, procedure, subclassId, &away) != FALSE && away != 0;
}

// Changes the settings and redraws the shadow.
template <class Change>
void changeSettings(HWND target, const Change& change) {
  if (HWND shadow = shadowOf(target)) {
    ShadowSettings settings = settingsOf(shadow);
    change(settings);
    redraw(target, shadow, settings);
    follow(target, shadow);
  }
}

}  // namespace

HWND shadowOf(HWND target) { return static_cast<HWND>(GetPropW(target, shadowProperty)); }

void create(HWND target) {
  if (shadowOf(target) != nullptr) {
    return;
  }
  registerClass();
  HWND shadow = CreateWindowExW(layeredTransparentTool, shadowClass, L"", popUp, 0, 0, 0, 0,
                                nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  SetPropW(target, shadowProperty, shadow);
  SetWindowSubclass(target, procedure, subclassId, 0);
  redraw(target, shadow, {});
  follow(target, shadow);
}

void destroy(HWND target) {
  if (HWND shadow = shadowOf(target)) {
    DestroyWindow(shadow);
    RemovePropW(target, shadowProperty);
    RemoveWindowSubclass(target, procedure, subclassId);
  }
}

void setSize(HWND target, int size) {
  changeSettings(target, [size](ShadowSettings& settings) { settings.size = size; });
}

void setColor(HWND target, std::uint32_t color) {
  changeSettings(target, [color](ShadowSettings& settings) { settings.color = color; });
}

ShadowSettings settingsOf(HWND shadow) {
  return {GetWindowLongW(shadow, sizeAt),
          static_cast<std::uint32_t>(GetWindowLongW(shadow, colorAt)),
          GetWindowLongW(shadow, strengthAt), GetWindowLongW(shadow, dropAt)};
}

}  // namespace zelvreg::controls::modShadow
