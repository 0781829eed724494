// The program's icons as pictures that the controls can draw.
#ifndef ZELVREG_DESKTOP_ICON_PICTURE_H
#define ZELVREG_DESKTOP_ICON_PICTURE_H

#include <string_view>

#include "controls/Canvas.h"
#include "desktop/Colors.h"

namespace zelvreg::desktop {

struct IconRequest {
  std::string_view key;
  int pixels = 16;
  Rgb color;
};

// Null for a key without an icon. Each picture is made once.
controls::Picture iconPicture(const IconRequest& request);

// The color of an icon where its place asks for no other.
Tone toneOfIcon(std::string_view key);

}  // namespace zelvreg::desktop

#endif
