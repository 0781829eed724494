// Colors as the controls compute them, and as their properties store them.
#ifndef ZELVREG_CONTROLS_COLOR_H
#define ZELVREG_CONTROLS_COLOR_H

#include <cstdint>

namespace zelvreg::controls {

struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  bool operator==(const Rgb&) const = default;
};

// 0xRRGGBB, the order in which a designer writes a color.
constexpr Rgb rgb(std::uint32_t hex) {
  return {static_cast<std::uint8_t>(hex >> 16), static_cast<std::uint8_t>(hex >> 8),
          static_cast<std::uint8_t>(hex)};
}

// A color of a property is in the system's order, 0x00BBGGRR, or 0x800000nn for the system color
// nn.
constexpr bool isSystemColor(std::uint32_t property) { return (property & 0x80000000) != 0; }
constexpr std::uint32_t systemColor(std::uint32_t number) { return 0x80000000 | number; }
// `property` is no system color.
constexpr Rgb fromProperty(std::uint32_t property) {
  return {static_cast<std::uint8_t>(property), static_cast<std::uint8_t>(property >> 8),
          static_cast<std::uint8_t>(property >> 16)};
}
constexpr std::uint32_t toProperty(Rgb color) {
  return color.red | std::uint32_t{color.green} << 8 | std::uint32_t{color.blue} << 16;
}

// `share` of 0 is `from`, of 1 is `to`.
Rgb mix(Rgb from, Rgb to, double share);

// The contrast of two colors, 1 to 21, as the accessibility guidelines for the web compute it.
// Text needs at least 4.5.
double contrast(Rgb one, Rgb other);

inline constexpr double readableContrast = 4.5;
// What a mark that is no text needs.
inline constexpr double visibleContrast = 3;

// The text of a light window, which is read more easily than black.
inline constexpr Rgb darkText = rgb(0x1F2937);

// Whether dark text is read more easily on the color than white text.
bool isLight(Rgb color);

// The color that is wanted for a text, if it can be read on the ground; else dark or white.
Rgb readableOn(Rgb ground, Rgb wanted);
// The wanted color, moved towards black or white until it has that contrast to the ground. One of
// the two always has 4.5.
Rgb seenOn(Rgb ground, Rgb wanted, double least);

}  // namespace zelvreg::controls

#endif
