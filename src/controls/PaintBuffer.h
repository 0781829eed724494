// Pixels for both our own shapes and the system's text, which can be copied to a window.
#ifndef ZELVREG_CONTROLS_PAINT_BUFFER_H
#define ZELVREG_CONTROLS_PAINT_BUFFER_H

#include <windows.h>

#include "controls/Canvas.h"
#include "controls/GdiObjects.h"
#include "controls/PropertyBag.h"

namespace zelvreg::controls {

// A section of 32-bit pixels, top row first, selected into a device context.
class PaintBuffer {
 public:
  // Holds at least one pixel.
  explicit PaintBuffer(Size sizeInPixels);
  PaintBuffer(const PaintBuffer&) = delete;
  PaintBuffer& operator=(const PaintBuffer&) = delete;
  ~PaintBuffer() = default;

  [[nodiscard]] HDC dc() const { return context.get(); }
  [[nodiscard]] Size size() const { return extent; }
  // Its pixels hold what the system has drawn so far.
  [[nodiscard]] Canvas canvas() const;
  [[nodiscard]] Bitmap copy() const;

  // Copies all of it to a place of another device context.
  void show(HDC target, int left, int top) const;

 private:
  [[nodiscard]] std::span<std::uint32_t> pixels() const;

  Size extent;
  MemoryContext context;
  void* bits = nullptr;
  BitmapHandle section;
  Selection selected;
};

// A section of 32-bit pixels; `bits` points to them.
BitmapHandle makeSection(Size size, void*& bits);

// A font for a resolution; never null.
FontHandle makeFont(const FontDescription& font, int dpi);

// An icon or a cursor of a picture. The caller destroys it with DestroyIcon.
HICON makeIcon(const Bitmap& picture, bool isCursor = false);

COLORREF colorRef(Rgb color);

// The color that a property means now: a system color may change.
COLORREF colorOfNow(std::uint32_t property);

}  // namespace zelvreg::controls

#endif
