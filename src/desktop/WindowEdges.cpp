#include "desktop/WindowEdges.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace zelvreg::desktop {
namespace {

// Which end of a window, along one axis: -1 the start, 1 the end, 0 neither.
int endAt(int at, int length, int reach) {
  if (at < reach) {
    return -1;
  }
  return at >= length - reach ? 1 : 0;
}

struct Sides {
  int across;
  int down;
};

constexpr Sides sides[] = {
    {0, 0}, {-1, 0}, {1, 0}, {0, -1}, {-1, -1}, {1, -1}, {0, 1}, {-1, 1}, {1, 1},
};

struct Stretch {
  int start;
  int length;
};

Stretch draggedAlong(const Stretch& stretch, int side, int by, int least) {
  if (side == 0) {
    return stretch;
  }
  const int length = std::max(least, stretch.length + side * by);
  return {side < 0 ? stretch.start + stretch.length - length : stretch.start, length};
}

Stretch inside(const Stretch& stretch, const Stretch& area, int least) {
  const int length = std::max(least, std::min(stretch.length, area.length));
  const int last = std::max(area.start, area.start + area.length - length);
  return {std::clamp(stretch.start, area.start, last), length};
}

}  // namespace

Edge edgeAt(const Point& point, int width, int height, int reach, int corner) {
  if (point.x >= width - corner && point.y >= height - corner) {
    return Edge::BottomRight;
  }
  int across = endAt(point.x, width, reach);
  int down = endAt(point.y, height, reach);
  if (across != 0 && down == 0) {
    down = endAt(point.y, height, corner);
  } else if (down != 0 && across == 0) {
    across = endAt(point.x, width, corner);
  }
  for (std::size_t edge = 0; edge < std::size(sides); ++edge) {
    if (sides[edge].across == across && sides[edge].down == down) {
      return static_cast<Edge>(edge);
    }
  }
  return Edge::None;
}

Place draggedBy(const Place& start, Edge edge, const Point& by, const Place& least) {
  const auto& [across, down] = sides[static_cast<std::size_t>(edge)];
  const Stretch width = draggedAlong({start.left, start.width}, across, by.x, least.width);
  const Stretch height = draggedAlong({start.top, start.height}, down, by.y, least.height);
  return {width.start, height.start, width.length, height.length};
}

Place placeInside(const Place& place, const Place& area, const Place& least) {
  const Stretch across = inside({place.left, place.width}, {area.left, area.width}, least.width);
  const Stretch down = inside({place.top, place.height}, {area.top, area.height}, least.height);
  return {across.start, down.start, across.length, down.length};
}

}  // namespace zelvreg::desktop
