// An animated picture, read by the system's own decoder.
#ifndef ZELVREG_DESKTOP_ANIMATION_H
#define ZELVREG_DESKTOP_ANIMATION_H

#include <string>
#include <vector>

#include "controls/Canvas.h"

namespace zelvreg::desktop {

struct AnimationFrame {
  controls::Bitmap picture;  // the whole of it
  unsigned milliseconds = 100;
};

using Animation = std::vector<AnimationFrame>;

// Nothing for a file that is missing, is no picture, or is larger than any that the program comes
// with (512 points a side, 200 frames): the file lies where others may have written it.
Animation readAnimation(const std::string& file);

// The picture in another size; each pixel is the mean of what it covers.
controls::Bitmap resized(const controls::Bitmap& picture, controls::Size size);

}  // namespace zelvreg::desktop

#endif
