// The outlines of windows as lists of rectangles.
#ifndef ZELVREG_CONTROLS_WINDOW_REGION_H
#define ZELVREG_CONTROLS_WINDOW_REGION_H

#include <cstdint>
#include <vector>

#include "controls/Canvas.h"

namespace zelvreg::controls {

// What is cut from the four corners of a window to make them round: one flat rectangle for each row
// and side, made of the pixels of which at most `share` is inside. With a share of 0 the pixels on
// the edge stay, so that they can be drawn smoothly; with 0.5 the outline itself is as round as it
// can be. From top to bottom, left before right. None with a radius of 0.
std::vector<Rectangle> cornerCuts(Size window, double radius, double share = 0);

// Fills those with a share of 0.5 with the color that TransForm cuts out.
void maskCorners(Canvas& canvas, Size window, double radius, Rgb mask);

// The part of a picture that is not in the transparent color, as rectangles that do not overlap:
// runs of pixels in a row, each joined with an equal run in the row above. Alpha is ignored.
std::vector<Rectangle> opaqueParts(const Bitmap& picture, Rgb transparent);

}  // namespace zelvreg::controls

#endif
