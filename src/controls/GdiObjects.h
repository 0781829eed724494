// Owners of the graphics objects of Windows.
#ifndef ZELVREG_CONTROLS_GDI_OBJECTS_H
#define ZELVREG_CONTROLS_GDI_OBJECTS_H

#include <windows.h>

#include <memory>
#include <type_traits>

namespace zelvreg::controls {

struct DeleteGdiObject {
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};

// Must not be selected into a device context when it is destroyed.
template <class Handle>
using GdiObject = std::unique_ptr<std::remove_pointer_t<Handle>, DeleteGdiObject>;

using RegionHandle = GdiObject<HRGN>;
using FontHandle = GdiObject<HFONT>;
using BitmapHandle = GdiObject<HBITMAP>;
using BrushHandle = GdiObject<HBRUSH>;

struct DeleteIcon {
  void operator()(HICON icon) const { DestroyIcon(icon); }
};
using IconHandle = std::unique_ptr<std::remove_pointer_t<HICON>, DeleteIcon>;

// An object is selected as long as this lives.
class Selection {
 public:
  Selection(HDC context, HGDIOBJ object) : dc(context), before(SelectObject(context, object)) {}
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;
  ~Selection() { SelectObject(dc, before); }

 private:
  HDC dc;
  HGDIOBJ before;
};

// A device context in memory.
class MemoryContext {
 public:
  explicit MemoryContext(HDC like = nullptr) : dc(CreateCompatibleDC(like)) {}
  MemoryContext(const MemoryContext&) = delete;
  MemoryContext& operator=(const MemoryContext&) = delete;
  ~MemoryContext() { DeleteDC(dc); }

  [[nodiscard]] HDC get() const { return dc; }

 private:
  HDC dc;
};

// The device context of a window, or of the whole screen.
class WindowContext {
 public:
  explicit WindowContext(HWND ofWindow) : window(ofWindow), dc(GetDC(ofWindow)) {}
  WindowContext(const WindowContext&) = delete;
  WindowContext& operator=(const WindowContext&) = delete;
  ~WindowContext() { ReleaseDC(window, dc); }

  [[nodiscard]] HDC get() const { return dc; }

 private:
  HWND window;
  HDC dc;
};

}  // namespace zelvreg::controls

#endif
