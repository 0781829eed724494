#include "controls/Color.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zelvreg::controls {
namespace {

std::array<double, 256> linearParts() {
  std::array<double, 256> parts{};
  for (std::size_t part = 0; part < parts.size(); ++part) {
    const double share = static_cast<double>(part) / 255.0;
    parts[part] = share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  }
  return parts;
}

// Each color that is drawn is weighed against its ground, and powers are slow.
double linear(std::uint8_t part) {
  static const std::array<double, 256> parts = linearParts();
  return parts[part];
}

double luminance(Rgb color) {
  return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

constexpr Rgb black = rgb(0x000000);
constexpr Rgb white = rgb(0xFFFFFF);

Rgb furthestFrom(Rgb ground) {
  return contrast(ground, black) >= contrast(ground, white) ? black : white;
}

std::uint8_t between(std::uint8_t from, std::uint8_t to, double share) {
  return static_cast<std::uint8_t>(std::lround(from + (to - from) * share));
}

}  // namespace

Rgb mix(Rgb from, Rgb to, double share) {
  const double kept = std::clamp(share, 0.0, 1.0);
  return {between(from.red, to.red, kept), between(from.green, to.green, kept),
          between(from.blue, to.blue, kept)};
}

double contrast(Rgb one, Rgb other) {
  const double first = luminance(one) + 0.05;
  const double second = luminance(other) + 0.05;
  return std::max(first, second) / std::min(first, second);
}

bool isLight(Rgb color) { return contrast(color, darkText) >= contrast(color, white); }

Rgb readableOn(Rgb ground, Rgb wanted) {
  for (const Rgb color : {wanted, isLight(ground) ? darkText : white}) {
    if (contrast(color, ground) >= readableContrast) {
      return color;
    }
  }
  return furthestFrom(ground);
}

Rgb seenOn(Rgb ground, Rgb wanted, double least) {
  constexpr double step = 0.125;
  const Rgb end = furthestFrom(ground);
  for (double share = 0; share < 1; share += step) {
    const Rgb color = mix(wanted, end, share);
    if (contrast(color, ground) >= least) {
      return color;
    }
  }
  return end;
}

}  // namespace zelvreg::controls
