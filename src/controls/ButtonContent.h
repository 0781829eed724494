// The content of a button's face: where its picture and its caption go, and how the picture is
// changed for a state.
#ifndef ZELVREG_CONTROLS_BUTTON_CONTENT_H
#define ZELVREG_CONTROLS_BUTTON_CONTENT_H

#include "controls/ButtonLook.h"

namespace zelvreg::controls {

struct ContentPlaces {
  Rectangle picture;
  Rectangle text;

  bool operator==(const ContentPlaces&) const = default;
};

// How wide the caption may be before it wraps, and how high before it is cut off, in pixels, next
// to a picture of that size (0 x 0 for none).
Size captionRoom(Size button, Size picture, PicturePlace place, int dpi);

// Picture and caption as one block in the middle, or at the left.
ContentPlaces placeContent(Size button, Size picture, Size text, PicturePlace place,
                           bool isLeftAligned, int dpi);

// The picture for a state, with its transparent color removed and its effects applied; none if the
// button has no picture.
Picture shownPicture(const ButtonProperties& properties, const ButtonState& state, Rgb textColor);

}  // namespace zelvreg::controls

#endif
