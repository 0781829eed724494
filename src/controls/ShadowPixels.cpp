#include "controls/ShadowPixels.h"

#include <algorithm>
#include <cmath>

namespace zelvreg::controls {

int shadowAlpha(double distance, const ShadowSettings& settings) {
  if (settings.size <= 0 || distance >= settings.size) {
    return 0;
  }
  const double left = 1 - std::max(distance, 0.0) / settings.size;
  return static_cast<int>(std::lround(std::clamp(settings.strength, 0, 255) * left * left));
}

std::uint32_t shadowPixel(int alpha, const ShadowSettings& settings) {
  const Rgb color = fromProperty(settings.color);
  const auto multiplied = [alpha](std::uint8_t part) {
    return static_cast<std::uint32_t>((part * alpha + 127) / 255);
  };
  return static_cast<std::uint32_t>(alpha) << 24 | multiplied(color.red) << 16 |
         multiplied(color.green) << 8 | multiplied(color.blue);
}

Rectangle shadowPlace(const Rectangle& window, const ShadowSettings& settings) {
  return {window.left - settings.size, window.top - settings.size + settings.drop,
          window.right + settings.size, window.bottom + settings.size + settings.drop};
}

Bitmap shadowCorner(const ShadowSettings& settings) {
  const int size = std::max(settings.size, 0);
  Bitmap corner(size, size);
  std::size_t index = 0;
  for (int row = 0; row < size; ++row) {
    for (int column = 0; column < size; ++column) {
      // From the middle of the pixel to the window's corner; in the last row and column, straight.
      const double across = size - 1 - column;
      const double down = size - 1 - row;
      const double distance = std::sqrt(across * across + down * down) + 0.5;
      corner.pixels[index++] = shadowPixel(shadowAlpha(distance, settings), settings);
    }
  }
  return corner;
}

}  // namespace zelvreg::controls
