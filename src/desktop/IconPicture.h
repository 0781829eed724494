// The program's icons as pictures that the controls can draw.
#ifndef ZELVREG_DESKTOP_ICON_PICTURE_H
#define ZELVREG_DESKTOP_ICON_PICTURE_H

#include <optional>
#include <string_view>

#include "controls/Canvas.h"

namespace zelvreg::desktop {

struct IconRequest {
  std::string_view key;
  int resolution = 96;
  int length = 16;  // points at 96 to the inch
  // Other than the icon's own.
  std::optional<controls::Rgb> colour = std::nullopt;
};

// None for a key without an icon. Each is made once.
controls::Picture iconPicture(const IconRequest& request);

}  // namespace zelvreg::desktop

#endif
