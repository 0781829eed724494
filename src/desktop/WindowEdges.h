// How the edges of a window without a frame of the system are seized and dragged.
#ifndef ZELVREG_DESKTOP_WINDOW_EDGES_H
#define ZELVREG_DESKTOP_WINDOW_EDGES_H

#include <cstdint>

#include "layout/Layout.h"

namespace zelvreg::desktop {

// In the order of the system's numbers for these parts of a frame.
enum class Edge : std::uint8_t {
  None,
  Left,
  Right,
  Top,
  TopLeft,
  TopRight,
  Bottom,
  BottomLeft,
  BottomRight,
};

struct Point {
  int x;
  int y;
};

// The edge at a point of a window of that size. An edge is as thick as `reach`; near a corner,
// which reaches as far as `corner` along both edges, it is both of them. The lower right corner is
// a grip: all of its square. Lengths are all in one unit.
Edge edgeAt(const Point& point, int width, int height, int reach, int corner);

// The window's place after one of its edges was dragged by that much. The opposite edge stays where
// it is, and the window is never smaller than `least`, of which only the size counts.
Place draggedBy(const Place& start, Edge edge, const Point& by, const Place& least);

// The place nearest to another that is inside an area and at least as large as `least`. A window
// that is larger than the area begins at the area's upper left corner.
Place placeInside(const Place& place, const Place& area, const Place& least);

}  // namespace zelvreg::desktop

#endif
