// What the system says about the screen, and calls that only newer systems have.
#ifndef ZELVREG_DESKTOP_SYSTEM_SCREEN_H
#define ZELVREG_DESKTOP_SYSTEM_SCREEN_H

#include <windows.h>

namespace zelvreg::desktop {

// Resolutions in dpi: of the system, and of the screen that a window is on.
int resolutionOfSystem();
int resolutionOf(HWND window);

// Of the main screen, in pixels.
SIZE screenSize();

// The largest size of a window in the middle of the main screen that does not cover the taskbar.
SIZE roomInTheMiddle();

// Of the screen that a window is on, or is nearest to: all of it, and what the taskbar leaves free.
struct ScreenAreas {
  RECT whole;
  RECT work;
};
ScreenAreas areasAround(HWND window);

// Lets a message of the shell through: the program runs as administrator, so it would be blocked.
void letThrough(HWND window, UINT message);

}  // namespace zelvreg::desktop

#endif
