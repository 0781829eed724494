// The colors of the small window that explains what the mouse is on.
#ifndef ZELVREG_CONTROLS_TIP_COLORS_H
#define ZELVREG_CONTROLS_TIP_COLORS_H

#include <windows.h>

#include "controls/Color.h"

namespace zelvreg::controls {

// A null window is ignored.
void colorTip(HWND tip, Rgb ground, Rgb text);

}  // namespace zelvreg::controls

#endif
