#include "gallery/GalleryIcons.h"

#include <vector>

namespace zelvreg::gallery {
namespace {

using controls::Stroke;

// In sixteenths of the picture's side.
struct Drawing {
  std::vector<Stroke> strokes;
  double circleX = 0;
  double circleY = 0;
  double circleRadius = 0;  // 0 for none
};

Stroke line(double fromX, double fromY, double toX, double toY) {
  return {fromX, fromY, toX, toY, 0};
}

Drawing drawingOf(Icon icon) {
  switch (icon) {
    case Icon::Search:
      return {{line(10.4, 10.4, 14, 14)}, 6.8, 6.8, 5.2};
    case Icon::Exclude:
      return {{line(3.8, 12.2, 12.2, 3.8)}, 8, 8, 6.6};
    case Icon::Play:
      return {{line(4.5, 3, 12.5, 8), line(12.5, 8, 4.5, 13), line(4.5, 13, 4.5, 3)}};
    case Icon::Close:
      return {{line(3.5, 3.5, 12.5, 12.5), line(12.5, 3.5, 3.5, 12.5)}};
    case Icon::Tick:
      return {{line(2.5, 8.5, 6, 12), line(6, 12, 13.5, 4)}};
    case Icon::List:
      return {{line(6, 4, 14, 4), line(6, 8, 14, 8), line(6, 12, 14, 12), line(2.4, 4, 2.6, 4),
               line(2.4, 8, 2.6, 8), line(2.4, 12, 2.6, 12)}};
    case Icon::Undo:
      return {{line(5.5, 2.5, 2.5, 5.5), line(2.5, 5.5, 5.5, 8.5), line(2.5, 5.5, 10, 5.5),
               line(10, 5.5, 13, 8), line(13, 8, 12.5, 11), line(12.5, 11, 10, 12.5),
               line(10, 12.5, 6, 12.5)}};
    case Icon::Minimise:
      return {{line(3.5, 11, 12.5, 11)}};
    case Icon::Report:
      return {{line(3.5, 2, 9.5, 2), line(9.5, 2, 12.5, 5), line(12.5, 5, 12.5, 14),
               line(12.5, 14, 3.5, 14), line(3.5, 14, 3.5, 2), line(6, 8, 10, 8),
               line(6, 11, 10, 11)}};
  }
  return {};
}

}  // namespace

controls::Picture makePicture(Icon icon, int dpi, controls::Rgb color) {
  const int side = controls::scaled(16, dpi);
  const double unit = side / 16.0;
  const double width = 1.6 * unit;
  controls::Bitmap bitmap(side, side);
  controls::Canvas canvas(bitmap);
  const Drawing drawing = drawingOf(icon);
  if (drawing.circleRadius > 0) {
    const double radius = drawing.circleRadius * unit;
    const double x = drawing.circleX * unit;
    const double y = drawing.circleY * unit;
    canvas.draw(controls::Shape{x - radius, y - radius, x + radius, y + radius, radius, width,
                                color, color});
  }
  for (const Stroke& stroke : drawing.strokes) {
    canvas.draw(Stroke{stroke.fromX * unit, stroke.fromY * unit, stroke.toX * unit,
                       stroke.toY * unit, width},
                color);
  }
  return std::make_shared<const controls::Bitmap>(std::move(bitmap));
}

}  // namespace zelvreg::gallery
