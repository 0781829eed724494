// What the system says about the screen, and calls that only newer systems have.
#ifndef ZELVREG_DESKTOP_SYSTEM_SCREEN_H
#define ZELVREG_DESKTOP_SYSTEM_SCREEN_H

#include <windows.h>

#include "layout/Layout.h"

namespace zelvreg::desktop {

// The message of a window that is on a screen of another resolution now: headers for older systems
// do not name it.
inline constexpr UINT resolutionChanged = 0x02E0;

// Resolutions in dpi: of the system when the user signed in, of the screen that a window is on, and
// of the main screen.
int resolutionOfSystem();
int resolutionOf(HWND window);
int resolutionOfMainScreen();

// Of the main screen, in pixels.
SIZE screenSize();

// The largest size of a window in the middle of the main screen that does not cover the taskbar.
SIZE roomInTheMiddle();

// The same of the screen that a rectangle is on. The main screen has the room in the middle, where
// the window opens.
SIZE roomAround(const RECT& place);

// How wide a scroll bar of a window is, in pixels of the screen.
int scrollBarWidth(HWND window);

// Of the screen that a window is on, or is nearest to: all of it, and what the taskbar leaves free.
struct ScreenAreas {
  RECT whole;
  RECT work;
};
ScreenAreas areasAround(HWND window);

// As a place; of a window, on the screen.
Place placeOf(const RECT& rectangle);
Place placeOf(HWND window);

// Lets a message of the shell through: the program runs as administrator, so it would be blocked.
void letThrough(HWND window, UINT message);

}  // namespace zelvreg::desktop

#endif
