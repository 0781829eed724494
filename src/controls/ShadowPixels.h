// The pixels of a soft shadow around a window.
#ifndef ZELVREG_CONTROLS_SHADOW_PIXELS_H
#define ZELVREG_CONTROLS_SHADOW_PIXELS_H

#include <cstdint>

#include "controls/Canvas.h"

namespace zelvreg::controls {

// What a shadow window keeps in its four window longs, in their order.
struct ShadowSettings {
  std::int32_t size = 8;           // how far it reaches beyond the window, in pixels
  std::uint32_t color = 0x000000;  // in the system's order 0x00BBGGRR
  std::int32_t strength = 80;      // alpha at the window's edge, 0 to 255
  std::int32_t drop = 2;           // how far it is moved down, in pixels

  bool operator==(const ShadowSettings&) const = default;
};

// The alpha at a distance from the window in pixels: `strength` at 0, falling with the square of
// the distance that is left, 0 from `size` on.
int shadowAlpha(double distance, const ShadowSettings& settings);

// A pixel of the shadow's color, multiplied by its alpha.
std::uint32_t shadowPixel(int alpha, const ShadowSettings& settings);

// The place of a window's shadow, in screen coordinates like the window's.
Rectangle shadowPlace(const Rectangle& window, const ShadowSettings& settings);

// The upper left corner, size x size pixels; the three others are its mirror images. Its last row
// and last column continue along the edges.
Bitmap shadowCorner(const ShadowSettings& settings);

}  // namespace zelvreg::controls

#endif
