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

// The frames of a GIF. Its file lies where others may have written it, so it is held to what the
// program's own could ever need: nothing for one that is missing, is of another format, or is
// larger (512 pixels a side, 4 MB), and no more than the first 200 frames or 64 MB of pixels.
Animation readAnimation(const std::string& file);

// The picture in another size; each pixel is the mean of what it covers.
controls::Bitmap resized(const controls::Bitmap& picture, controls::Size size);

}  // namespace zelvreg::desktop

#endif
