// The box of a check box, and the ring of an option button.
#ifndef ZELVREG_DESKTOP_CHECK_MARK_H
#define ZELVREG_DESKTOP_CHECK_MARK_H

#include "controls/Canvas.h"
#include "desktop/Colors.h"

namespace zelvreg::desktop {

// In pixels.
struct CheckMark {
  int left = 0;
  int top = 0;
  int length = 0;
  bool isOn = false;
  bool isRound = false;
  bool isEnabled = true;
  bool isHovered = false;
  bool isPressed = false;
};

void drawCheckMark(controls::Canvas& canvas, const CheckMark& mark, const Colors& colors);

}  // namespace zelvreg::desktop

#endif
