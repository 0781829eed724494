// What stands on a button's face: where its picture and its caption go, and what is done to the
// picture.
#ifndef ZELVREG_CONTROLS_BUTTON_CONTENT_H
#define ZELVREG_CONTROLS_BUTTON_CONTENT_H

#include "controls/ButtonLook.h"

namespace zelvreg::controls {

struct ContentPlaces {
  Rectangle picture;
  Rectangle text;

  bool operator==(const ContentPlaces&) const = default;
};

// How wide the caption may be before it is broken, and how high before it is cut, in pixels, beside
// a picture of a size (0 x 0 for none).
Size captionRoom(Size button, Size picture, PicturePlace place, int dpi);

// Picture and caption as one block in the middle, or at the left.
ContentPlaces placeContent(Size button, Size picture, Size text, PicturePlace place,
                           bool isLeftAligned, int dpi);

// The picture of a state with its transparent color taken out and its effects applied; none
// without a picture.
Picture shownPicture(const ButtonProperties& properties, const ButtonState& state, Rgb textColor);

}  // namespace zelvreg::controls

#endif
