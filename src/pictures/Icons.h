// The window's small pictures, by the keys of the form's image lists. Each is one shape of one
// color, kept as how far it covers each pixel, so that it can be painted in any color.
#ifndef ZELVREG_PICTURES_ICONS_H
#define ZELVREG_PICTURES_ICONS_H

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace zelvreg {

// What a picture is painted in where its place asks for nothing else, such as white on the title.
enum class IconColor { Accent, Secondary, Waiting, Testing, Finished, Problem };

struct Icon {
  std::string_view key;
  IconColor color;
};

// size * size bytes, rows from the top: 0 leaves a pixel as it is, 255 covers it. They lie in the
// program's file and last as long as the process.
struct IconShape {
  int size;
  std::span<const std::uint8_t> coverage;
};

// All there are, sorted by key.
std::span<const Icon> icons();

// Null when there is no such picture.
const Icon* findIcon(std::string_view key);

// The largest bitmap of a picture that fits into a square of so many pixels, or the smallest when
// none does. Nothing when there is no such picture, or when the program was linked without them.
std::optional<IconShape> iconShape(std::string_view key, int pixels);

// The shape in a color, red in the lowest byte as the registry has it: BGRA pixels whose colors
// are multiplied by alpha, rows from the top, which is what AlphaBlend and an image list take.
std::vector<std::uint32_t> painted(const IconShape& shape, std::uint32_t color);

}  // namespace zelvreg

#endif
