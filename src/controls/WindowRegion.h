// The outlines of windows as lists of rectangles.
#ifndef ZELVREG_CONTROLS_WINDOW_REGION_H
#define ZELVREG_CONTROLS_WINDOW_REGION_H

#include <cstdint>
#include <vector>

#include "controls/Canvas.h"

namespace zelvreg::controls {

// What is taken off the four corners of a window to make them round: one flat rectangle for each
// row and side, of the pixels of which at most `share` lies inside. With a share of 0 the pixels
// that the edge goes through stay, for whoever draws them smoothly; with one of 0.5 the outline
// itself is as round as it can be. In order from the top, left before right. None with a radius of
// 0.
std::vector<Rectangle> cornerCuts(Size window, double radius, double share = 0);

// Fills those of the rounder sort with the color that TransForm takes away.
void maskCorners(Canvas& canvas, Size window, double radius, Rgb mask);

// The part of a picture that is not of the transparent color, as rectangles that do not overlap:
// runs of pixels in a row, each joined with an equal run in the row above. The alpha of a pixel is
// no matter.
std::vector<Rectangle> opaqueParts(const Bitmap& picture, Rgb transparent);

}  // namespace zelvreg::controls

#endif
