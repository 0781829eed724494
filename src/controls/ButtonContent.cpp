#include "controls/ButtonContent.h"

#include <algorithm>
#include <cmath>

namespace zelvreg::controls {
namespace {

constexpr double padding = 12;
constexpr double gap = 8;

bool isStacked(PicturePlace place) {
  return place == PicturePlace::Above || place == PicturePlace::Below;
}

// Stacked, the two are closer, because a line of text has some space of its own.
int stackedGap(int dpi) { return scaled(gap, dpi) / 2; }

bool isBeside(PicturePlace place) { return !isStacked(place) && place != PicturePlace::Behind; }

Rectangle placed(int left, int top, Size size) {
  return {left, top, left + size.width, top + size.height};
}

std::uint32_t part(std::uint32_t pixel, int shift) { return pixel >> shift & 0xFF; }

std::uint32_t withAlpha(Rgb color, std::uint32_t alpha) {
  const auto multiplied = [alpha](std::uint8_t value) { return (value * alpha + 127) / 255; };
  return alpha << 24 | multiplied(color.red) << 16 | multiplied(color.green) << 8 |
         multiplied(color.blue);
}

std::uint32_t gray(std::uint32_t pixel) {
  // How much each of the three colors adds to the brightness that the eye sees, in hundredths.
  const std::uint32_t level =
      (part(pixel, 16) * 30 + part(pixel, 8) * 59 + part(pixel, 0) * 11 + 50) / 100;
  return (pixel & 0xFF000000) | level << 16 | level << 8 | level;
}

std::uint32_t faded(std::uint32_t pixel, double share) {
  std::uint32_t result = 0;
  for (const int shift : {0, 8, 16, 24}) {
    result |= static_cast<std::uint32_t>(std::lround(part(pixel, shift) * share)) << shift;
  }
  return result;
}

template <class Change>
void forEachPixel(Bitmap& picture, const Change& change) {
  std::ranges::transform(picture.pixels, picture.pixels.begin(), change);
}

// The picture in front of its own shape, one pixel further right and down.
Bitmap withShadow(const Bitmap& picture) {
  Bitmap shape = picture;
  forEachPixel(shape, [](std::uint32_t pixel) { return withAlpha({}, (pixel >> 24) * 2 / 5); });
  Bitmap both(picture.width + 1, picture.height + 1);
  Canvas canvas(both);
  canvas.draw(shape, 1, 1);
  canvas.draw(picture, 0, 0);
  return both;
}

void applyEffect(Bitmap& picture, PictureEffect effect, bool isHovered, Rgb textColor) {
  switch (effect) {
    case PictureEffect::TextColor:
      forEachPixel(picture, [&](std::uint32_t pixel) { return withAlpha(textColor, pixel >> 24); });
      break;
    case PictureEffect::Pale:
      if (!isHovered) {
        forEachPixel(picture, [](std::uint32_t pixel) { return faded(pixel, 0.6); });
      }
      break;
    case PictureEffect::Shadow:
      picture = withShadow(picture);
      break;
    default:
      break;
  }
}

}  // namespace

Size captionRoom(Size button, Size picture, PicturePlace place, int dpi) {
  Size room{button.width - 2 * scaled(padding, dpi), button.height};
  if (picture.width > 0 && isBeside(place)) {
    room.width -= picture.width + scaled(gap, dpi);
  } else if (picture.width > 0 && isStacked(place)) {
    room.height -= picture.height + stackedGap(dpi);
  }
  return {std::max(0, room.width), std::max(0, room.height)};
}

ContentPlaces placeContent(Size button, Size picture, Size text, PicturePlace place,
                           bool isLeftAligned, int dpi) {
  const bool hasBoth = picture.width > 0 && text.width > 0;
  const int between = hasBoth ? scaled(gap, dpi) : 0;
  const int below = hasBoth ? stackedGap(dpi) : 0;
  Size block{std::max(picture.width, text.width), std::max(picture.height, text.height)};
  if (isBeside(place)) {
    block.width = picture.width + between + text.width;
  } else if (isStacked(place)) {
    block.height = picture.height + below + text.height;
  }
  const int left = isLeftAligned ? scaled(padding, dpi) : (button.width - block.width) / 2;
  const int top = (button.height - block.height) / 2;
  const auto middle = [](int whole, int inner) { return (whole - inner) / 2; };
  int pictureLeft = left + middle(block.width, picture.width);
  int textLeft = left + middle(block.width, text.width);
  int pictureTop = top + middle(block.height, picture.height);
  int textTop = top + middle(block.height, text.height);
  switch (place) {
    case PicturePlace::Right:
      textLeft = left;
      pictureLeft = left + text.width + between;
      break;
    case PicturePlace::Above:
      pictureTop = top;
      textTop = top + picture.height + below;
      break;
    case PicturePlace::Below:
      textTop = top;
      pictureTop = top + text.height + below;
      break;
    case PicturePlace::Behind:
      break;
    default:
      pictureLeft = left;
      textLeft = left + picture.width + between;
      break;
  }
  return {placed(pictureLeft, pictureTop, picture), placed(textLeft, textTop, text)};
}

Picture shownPicture(const ButtonProperties& properties, const ButtonState& state, Rgb textColor) {
  const bool isHovered = state.isHovered && properties.Enabled;
  const Picture& chosen =
      isHovered && properties.PictureOver ? properties.PictureOver : properties.PictureNormal;
  if (!chosen) {
    return nullptr;
  }
  Bitmap shown = *chosen;
  if (properties.UseMaskColor && !isSystemColor(properties.MaskColor)) {
    const std::uint32_t mask = opaque(fromProperty(properties.MaskColor));
    std::ranges::replace(shown.pixels, mask, 0U);
  }
  if ((properties.UseGreyscale && !isHovered) || !properties.Enabled) {
    forEachPixel(shown, gray);
  }
  applyEffect(shown, static_cast<PictureEffect>(properties.SpecialEffect), isHovered, textColor);
  // In the text's color it is already as pale as the text.
  if (!properties.Enabled &&
      properties.SpecialEffect != static_cast<std::int16_t>(PictureEffect::TextColor)) {
    forEachPixel(shown, [](std::uint32_t pixel) { return faded(pixel, 0.45); });
  }
  return std::make_shared<const Bitmap>(std::move(shown));
}

}  // namespace zelvreg::controls
