#include <algorithm>
#include <array>

#include "desktop/Animation.h"

namespace zelvreg::desktop {
namespace {

// The source pixels that a pixel of the result covers, along one axis.
struct Span {
  int first;
  int last;
};

Span covered(int position, int length, int sourceLength) {
  const int first = position * sourceLength / length;
  const int last = std::max(first + 1, ((position + 1) * sourceLength + length - 1) / length);
  return {first, std::min(last, sourceLength)};
}

std::uint32_t mean(const controls::Bitmap& picture, Span columns, Span rows) {
  std::array<std::uint32_t, 4> sums{};
  for (int row = rows.first; row < rows.last; ++row) {
    for (int column = columns.first; column < columns.last; ++column) {
      const std::uint32_t pixel = picture.at(column, row);
      for (unsigned part = 0; part < sums.size(); ++part) {
        sums[part] += pixel >> (8 * part) & 255U;
      }
    }
  }
  const auto count =
      static_cast<std::uint32_t>((columns.last - columns.first) * (rows.last - rows.first));
  std::uint32_t result = 0;
  for (unsigned part = 0; part < sums.size(); ++part) {
    result |= (sums[part] + count / 2) / count << (8 * part);
  }
  return result;
}

}  // namespace

controls::Bitmap resized(const controls::Bitmap& picture, controls::Size size) {
  controls::Bitmap result(size.width, size.height);
  auto pixel = result.pixels.begin();
  for (int row = 0; row < size.height; ++row) {
    for (int column = 0; column < size.width; ++column) {
      *pixel++ = mean(picture, covered(column, size.width, picture.width),
                      covered(row, size.height, picture.height));
    }
  }
  return result;
}

}  // namespace zelvreg::desktop
