#include "controls/WindowRegion.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace zelvreg::controls {

std::vector<Rectangle> cornerCuts(Size window, double radius, double share) {
  const Shape shape{
      0,  0, static_cast<double>(window.width), static_cast<double>(window.height), radius, 0, {},
      {}, 1};
  std::vector<Rectangle> cuts;
  for (int row = 0; row < window.height; ++row) {
    int cut = 0;
    while (cut < window.width / 2 && coverage(shape, cut + 0.5, row + 0.5) <= share) {
      ++cut;
    }
    if (cut > 0) {
      cuts.push_back({0, row, cut, row + 1});
      cuts.push_back({window.width - cut, row, window.width, row + 1});
    }
  }
  return cuts;
}

void maskCorners(Canvas& canvas, Size window, double radius, Rgb mask) {
  for (const Rectangle& cut : cornerCuts(window, radius, 0.5)) {
    canvas.fill(cut, mask);
  }
}

std::vector<Rectangle> opaqueParts(const Bitmap& picture, Rgb transparent) {
  const std::uint32_t mask = opaque(transparent);
  const auto isOpaque = [&](int column, int row) {
    return (picture.at(column, row) | 0xFF000000) != mask;
  };
  std::vector<Rectangle> parts;
  // The rectangle of a run of the row above, by the run's two ends.
  std::map<std::pair<int, int>, std::size_t> above;
  for (int row = 0; row < picture.height; ++row) {
    std::map<std::pair<int, int>, std::size_t> runs;
    int column = 0;
    while (column < picture.width) {
      if (!isOpaque(column, row)) {
        ++column;
        continue;
      }
      const int from = column;
      while (column < picture.width && isOpaque(column, row)) {
        ++column;
      }
      const auto same = above.find({from, column});
      if (same != above.end()) {
        parts[same->second].bottom = row + 1;
        runs[{from, column}] = same->second;
      } else {
        runs[{from, column}] = parts.size();
        parts.push_back({from, row, column, row + 1});
      }
    }
    above = std::move(runs);
  }
  return parts;
}

}  // namespace zelvreg::controls
