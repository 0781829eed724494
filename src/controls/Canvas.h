// Pixels in memory, and the few smooth shapes that every control is drawn from.
#ifndef ZELVREG_CONTROLS_CANVAS_H
#define ZELVREG_CONTROLS_CANVAS_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "controls/Color.h"

namespace zelvreg::controls {

// In pixels. The right and the bottom edge are not part of it.
struct Rectangle {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  [[nodiscard]] int width() const { return right - left; }
  [[nodiscard]] int height() const { return bottom - top; }
  bool operator==(const Rectangle&) const = default;
};

struct Size {
  int width = 0;
  int height = 0;

  bool operator==(const Size&) const = default;
};

// `pixels` at 96 dpi as pixels at `dpi`.
int scaled(double pixels, int dpi);

// A picture of 0xAARRGGBB pixels, top row first, each color already multiplied by its alpha.
struct Bitmap {
  Bitmap() = default;
  Bitmap(int widthInPixels, int heightInPixels)
      : width(widthInPixels),
        height(heightInPixels),
        pixels(static_cast<std::size_t>(widthInPixels) * static_cast<std::size_t>(heightInPixels)) {
  }

  [[nodiscard]] std::uint32_t at(int column, int row) const {
    return pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(column)];
  }
  bool operator==(const Bitmap&) const = default;

  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

// A picture that several properties may share; none is allowed.
using Picture = std::shared_ptr<const Bitmap>;

constexpr std::uint32_t opaque(Rgb color) {
  return 0xFF000000 | std::uint32_t{color.red} << 16 | std::uint32_t{color.green} << 8 | color.blue;
}

// A rectangle with round corners, filled from top to bottom with a gradient, or its outline.
// Positions may be between pixels.
struct Shape {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
  double radius = 0;  // of the corners; more than half of a side is half of that side
  double line = 0;    // the width of the outline, which is inside; 0 fills the shape
  Rgb upper;
  Rgb lower;
  double opacity = 1;

  bool operator==(const Shape&) const = default;
};

// A straight line with round ends.
struct Stroke {
  double fromX = 0;
  double fromY = 0;
  double toX = 0;
  double toY = 0;
  double width = 0;
};

// Draws into pixels that somebody else owns and that outlive it.
class Canvas {
 public:
  // `pixels` holds width * height of them, top row first. On a mirrored canvas positions count from
  // its right edge; pictures keep their sides.
  Canvas(std::span<std::uint32_t> pixelsToDrawOn, int widthInPixels, int heightInPixels,
         bool isCanvasMirrored = false)
      : pixels(pixelsToDrawOn),
        width(widthInPixels),
        height(heightInPixels),
        mirrors(isCanvasMirrored) {}
  explicit Canvas(Bitmap& bitmap) : Canvas(bitmap.pixels, bitmap.width, bitmap.height) {}

  [[nodiscard]] bool isMirrored() const { return mirrors; }

  void clear(Rgb color);
  // The part of a rectangle that is on the canvas.
  void fill(const Rectangle& place, Rgb color);
  void draw(const Shape& shape);
  void draw(const Stroke& told, Rgb color);
  // Draws the picture, clipped to the canvas, its side that is read first at `from`.
  void draw(const Bitmap& picture, int from, int top, double opacity = 1);

 private:
  std::uint32_t& at(int column, int row);
  void drawPlaced(const Shape& shape);
  void drawRow(const Shape& shape, int row);
  // For each pixel that the rectangle touches.
  template <class Cover>
  void cover(double left, double top, double right, double bottom, const Cover& coverOf);

  std::span<std::uint32_t> pixels;
  int width;
  int height;
  bool mirrors = false;
};

// The picture with its left and right sides exchanged.
Bitmap mirrored(const Bitmap& picture);

// How much of the pixel whose middle is (x, y) is inside a shape, 0 to 1.
double coverage(const Shape& shape, double x, double y);

}  // namespace zelvreg::controls

#endif
