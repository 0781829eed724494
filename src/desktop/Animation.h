// An animated picture, read by the system's own decoder.
#ifndef ZELVREG_DESKTOP_ANIMATION_H
#define ZELVREG_DESKTOP_ANIMATION_H

#include <string>
#include <vector>

#include "controls/Canvas.h"

namespace zelvreg::desktop {

struct AnimationFrame {
  controls::Bitmap picture;  // the whole frame
  unsigned milliseconds = 100;
};

using Animation = std::vector<AnimationFrame>;

// The frames of a GIF. Others may have written its file, so there are limits that the program's own
// never reaches. No frames if the file is missing, of another format, or larger than 512 pixels a
// side or 4 MB. At most the first 200 frames, or 64 MB of pixels.
Animation readAnimation(const std::string& file);

// The picture in another size; each pixel is the mean of what it covers.
controls::Bitmap resized(const controls::Bitmap& picture, controls::Size size);

}  // namespace zelvreg::desktop

#endif
