// Windows that are laid out from the right, for languages that are read from there.
#ifndef ZELVREG_DESKTOP_MIRRORING_H
#define ZELVREG_DESKTOP_MIRRORING_H

#include <windows.h>

namespace zelvreg::desktop {

// Lays out a window, the windows in it and those that belong to them (open lists, tips) from the
// right or from the left. Whoever placed the windows in it has to place them again. Fields that the
// user types into stay as they are: paths and names of the registry are read from the left.
void mirror(HWND window, bool isFromRight);

}  // namespace zelvreg::desktop

#endif
