// Pixels for both our own shapes and the system's text, which can be copied to a window.
#ifndef ZELVREG_CONTROLS_PAINT_BUFFER_H
#define ZELVREG_CONTROLS_PAINT_BUFFER_H

#include <windows.h>

#include <cstdint>
#include <string_view>

#include "controls/Canvas.h"
#include "controls/GdiObjects.h"
#include "controls/PropertyBag.h"

namespace zelvreg::controls {

// From which side a window is laid out.
enum class Side : std::uint8_t { Left, Right };

// The side of the window to which a device context belongs.
Side sideOf(HDC context);

// A section of 32-bit pixels, top row first, selected into a device context. For a window that is
// laid out from the right, positions on its canvas and of its text count from the right edge.
class PaintBuffer {
 public:
  // Holds at least one pixel.
  explicit PaintBuffer(Size sizeInPixels, Side layoutSide = Side::Left);
  PaintBuffer(const PaintBuffer&) = delete;
  PaintBuffer& operator=(const PaintBuffer&) = delete;
  ~PaintBuffer() = default;

  [[nodiscard]] HDC dc() const { return context.get(); }
  [[nodiscard]] Size size() const { return extent; }
  [[nodiscard]] Side side() const { return from; }
  // Its pixels hold what the system has drawn so far.
  [[nodiscard]] Canvas canvas() const;
  [[nodiscard]] Bitmap copy() const;

  // Draws a text as DrawTextW does, with its formats. "Left" is where a line begins. A text with
  // letters that are read from the right is read so.
  void write(std::u16string_view text, RECT place, UINT format) const;

  // Copies all of it to a place of another device context.
  void show(HDC target, int left, int top) const;

 private:
  [[nodiscard]] std::span<std::uint32_t> pixels() const;

  Size extent;
  Side from;
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
