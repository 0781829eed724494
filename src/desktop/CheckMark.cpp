#include "desktop/CheckMark.h"

#include <algorithm>

namespace zelvreg::desktop {
namespace {

using controls::Rgb;
using controls::Shape;

void drawTick(controls::Canvas& canvas, const CheckMark& mark, Rgb color) {
  const double unit = mark.length / 16.0;
  // A tick is the same in every direction of reading.
  const auto x = [&](double place) {
    return mark.left + (canvas.isMirrored() ? mark.length - place * unit : place * unit);
  };
  const auto y = [&](double place) { return mark.top + place * unit; };
  const double width = std::max(1.4, 1.8 * unit);
  canvas.draw({x(4), y(8.4), x(6.8), y(11.2), width}, color);
  canvas.draw({x(6.8), y(11.2), x(12.2), y(5.2), width}, color);
}

}  // namespace

void drawCheckMark(controls::Canvas& canvas, const CheckMark& mark, const Colors& colors) {
  const double left = mark.left;
  const double top = mark.top;
  const double right = left + mark.length;
  const double bottom = top + mark.length;
  const double radius = mark.isRound ? mark.length / 2.0 : mark.length / 5.0;
  const Rgb edge = colors[!mark.isEnabled                                 ? Tone::Disabled
                          : mark.isOn || mark.isHovered || mark.isPressed ? Tone::Mark
                                                                          : Tone::MarkEdge];
  const bool isFilled = mark.isOn && !mark.isRound;
  const bool isLit = mark.isEnabled && mark.isPressed && !colors.isSystem();
  const Rgb face = isFilled ? edge : colors[isLit ? Tone::Selected : Tone::Surface];
  canvas.draw(Shape{left, top, right, bottom, radius, 0, face, face});
  canvas.draw(Shape{left, top, right, bottom, radius, 1.2, edge, edge});
  if (!mark.isOn) {
    return;
  }
  if (mark.isRound) {
    const double inset = mark.length * 0.27;
    canvas.draw(Shape{left + inset, top + inset, right - inset, bottom - inset,
                      static_cast<double>(mark.length), 0, edge, edge});
  } else {
    drawTick(canvas, mark, colors[Tone::OnMark]);
  }
}

}  // namespace zelvreg::desktop
