// The line pictures of the gallery, drawn at any size.
#ifndef ZELVREG_GALLERY_GALLERY_ICONS_H
#define ZELVREG_GALLERY_GALLERY_ICONS_H

#include <cstdint>

#include "controls/Canvas.h"

namespace zelvreg::gallery {

enum class Icon : std::uint8_t { Search, Exclude, Play, Close, Tick, List, Undo, Minimise, Report };

// In one color, 16 pixels wide at 96 dots to the inch.
controls::Picture makePicture(Icon icon, int dpi, controls::Rgb color = {});

}  // namespace zelvreg::gallery

#endif
