#include "controls/Canvas.h"

#include <algorithm>
#include <cmath>

namespace zelvreg::controls {
namespace {

// The distance from a point to the edge of a rectangle with round corners, negative inside.
double distanceTo(const Shape& shape, double x, double y) {
  const double halfWidth = (shape.right - shape.left) / 2;
  const double halfHeight = (shape.bottom - shape.top) / 2;
  const double radius = std::min({shape.radius, halfWidth, halfHeight});
  const double beyondX = std::abs(x - shape.left - halfWidth) - halfWidth + radius;
  const double beyondY = std::abs(y - shape.top - halfHeight) - halfHeight + radius;
  return std::hypot(std::max(beyondX, 0.0), std::max(beyondY, 0.0)) +
         std::min(std::max(beyondX, beyondY), 0.0) - radius;
}

double distanceTo(const Stroke& stroke, double x, double y) {
  const double alongX = stroke.toX - stroke.fromX;
  const double alongY = stroke.toY - stroke.fromY;
  const double length = alongX * alongX + alongY * alongY;
  const double share =
      length > 0 ? std::clamp(((x - stroke.fromX) * alongX + (y - stroke.fromY) * alongY) / length,
                              0.0, 1.0)
                 : 0.0;
  return std::hypot(x - stroke.fromX - alongX * share, y - stroke.fromY - alongY * share);
}

// The part of a pixel on the inner side of an edge at this distance from its middle.
double inside(double distance) { return std::clamp(0.5 - distance, 0.0, 1.0); }

std::uint32_t part(std::uint32_t pixel, int shift) { return pixel >> shift & 0xFF; }

// A source whose colors are already multiplied by its alpha, laid over a pixel.
std::uint32_t over(std::uint32_t below, std::uint32_t source, double opacity) {
  // Most pixels of an icon.
  if (source == 0) {
    return below;
  }
  if (opacity >= 1 && part(source, 24) == 255) {
    return source;
  }
  const double through = 1 - part(source, 24) / 255.0 * opacity;
  std::uint32_t result = 0;
  for (const int shift : {0, 8, 16, 24}) {
    const double sum = part(source, shift) * opacity + part(below, shift) * through;
    result |= static_cast<std::uint32_t>(std::min(std::lround(sum), 255L)) << shift;
  }
  return result;
}

}  // namespace

int scaled(double pixels, int dpi) { return static_cast<int>(std::lround(pixels * dpi / 96)); }

double coverage(const Shape& shape, double x, double y) {
  if (shape.right <= shape.left || shape.bottom <= shape.top) {
    return 0;
  }
  const double distance = distanceTo(shape, x, y);
  return shape.line > 0 ? inside(distance) - inside(distance + shape.line) : inside(distance);
}

std::uint32_t& Canvas::at(int column, int row) {
  return pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                static_cast<std::size_t>(column)];
}

template <class Cover>
void Canvas::cover(double left, double top, double right, double bottom, const Cover& coverOf) {
  const int firstRow = std::max(0, static_cast<int>(std::floor(top)));
  const int endRow = std::min(height, static_cast<int>(std::ceil(bottom)));
  const int firstColumn = std::max(0, static_cast<int>(std::floor(left)));
  const int endColumn = std::min(width, static_cast<int>(std::ceil(right)));
  for (int row = firstRow; row < endRow; ++row) {
    for (int column = firstColumn; column < endColumn; ++column) {
      coverOf(at(column, row), column + 0.5, row + 0.5);
    }
  }
}

void Canvas::clear(Rgb color) { std::ranges::fill(pixels, opaque(color)); }

void Canvas::fill(const Rectangle& place, Rgb color) {
  draw(Shape{static_cast<double>(place.left), static_cast<double>(place.top),
             static_cast<double>(place.right), static_cast<double>(place.bottom), 0, 0, color,
             color});
}

Bitmap mirrored(const Bitmap& picture) {
  Bitmap result(picture.width, picture.height);
  auto place = result.pixels.begin();
  for (int row = 0; row < picture.height; ++row) {
    for (int column = picture.width; column > 0; --column) {
      *place++ = picture.at(column - 1, row);
    }
  }
  return result;
}

void Canvas::draw(const Shape& shape) {
  Shape placed = shape;
  if (mirrors) {
    placed.left = width - shape.right;
    placed.right = width - shape.left;
  }
  drawPlaced(placed);
}

void Canvas::drawPlaced(const Shape& shape) {
  const int firstRow = std::max(0, static_cast<int>(std::floor(shape.top)));
  const int endRow = std::min(height, static_cast<int>(std::ceil(shape.bottom)));
  for (int row = firstRow; row < endRow; ++row) {
    drawRow(shape, row);
  }
}

// Between its left and right edges all pixels of a row are covered alike, so only the ends of a row
// are computed pixel by pixel. The grounds of whole windows are drawn with this.
void Canvas::drawRow(const Shape& shape, int row) {
  const double y = row + 0.5;
  const double down = (y - shape.top) / (shape.bottom - shape.top);
  const std::uint32_t color = opaque(mix(shape.upper, shape.lower, down));
  const int first = std::max(0, static_cast<int>(std::floor(shape.left)));
  const int end = std::min(width, static_cast<int>(std::ceil(shape.right)));
  const double middle = (shape.left + shape.right) / 2;
  const double halfWidth = (shape.right - shape.left) / 2;
  const double radius = std::min({shape.radius, halfWidth, (shape.bottom - shape.top) / 2});
  const double reach = halfWidth - radius - shape.line - 1;
  const int alikeFrom =
      std::clamp(static_cast<int>(std::ceil(middle - reach)), first, std::max(first, end));
  const int alikeTo =
      std::clamp(static_cast<int>(std::floor(middle + reach)), alikeFrom, std::max(alikeFrom, end));
  const auto paint = [&](int from, int to, double share) {
    if (share >= 1) {
      std::fill(&at(from, row), &at(from, row) + (to - from), color);
    } else if (share > 0) {
      for (int column = from; column < to; ++column) {
        at(column, row) = over(at(column, row), color, share);
      }
    }
  };
  const auto paintEach = [&](int from, int to) {
    for (int column = from; column < to; ++column) {
      paint(column, column + 1, coverage(shape, column + 0.5, y) * shape.opacity);
    }
  };
  paintEach(first, alikeFrom);
  if (alikeFrom < alikeTo) {
    paint(alikeFrom, alikeTo, coverage(shape, alikeFrom + 0.5, y) * shape.opacity);
  }
  paintEach(alikeTo, end);
}

void Canvas::draw(const Stroke& told, Rgb color) {
  Stroke stroke = told;
  if (mirrors) {
    stroke.fromX = width - told.fromX;
    stroke.toX = width - told.toX;
  }
  const double half = stroke.width / 2;
  cover(
      std::min(stroke.fromX, stroke.toX) - half - 1, std::min(stroke.fromY, stroke.toY) - half - 1,
      std::max(stroke.fromX, stroke.toX) + half + 1, std::max(stroke.fromY, stroke.toY) + half + 1,
      [&](std::uint32_t& pixel, double x, double y) {
        const double share = inside(distanceTo(stroke, x, y) - half);
        if (share > 0) {
          pixel = over(pixel, opaque(color), share);
        }
      });
}

void Canvas::draw(const Bitmap& picture, int from, int top, double opacity) {
  const int left = mirrors ? width - from - picture.width : from;
  cover(left, top, left + picture.width, top + picture.height,
        [&](std::uint32_t& pixel, double x, double y) {
          pixel = over(pixel, picture.at(static_cast<int>(x) - left, static_cast<int>(y) - top),
                       opacity);
        });
}

}  // namespace zelvreg::controls
