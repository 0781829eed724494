// What the system tells of the screen, and calls that only newer systems have.
#ifndef ZELVREG_DESKTOP_SYSTEM_SCREEN_H
#define ZELVREG_DESKTOP_SYSTEM_SCREEN_H

#include <windows.h>

namespace zelvreg::desktop {

// Points to the inch: of the system, and of the screen that a window is on.
int resolutionOfSystem();
int resolutionOf(HWND window);

// Of the main screen, in its points.
SIZE screenSize();

// What a window in the middle of the main screen may take without touching the task bar.
SIZE roomInTheMiddle();

// The program runs as administrator, whom the shell's messages do not reach without leave.
void letThrough(HWND window, UINT message);

}  // namespace zelvreg::desktop

#endif
