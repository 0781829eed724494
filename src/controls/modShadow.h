// A soft shadow around a window, drawn by a layered window that follows it.
#ifndef ZELVREG_CONTROLS_MOD_SHADOW_H
#define ZELVREG_CONTROLS_MOD_SHADOW_H

#include <windows.h>

#include "controls/ShadowPixels.h"

namespace zelvreg::controls::modShadow {

// The shadow of a target window, or null. The target keeps the handle in its property
// "TrickShadow".
HWND shadowOf(HWND target);

// Does nothing if the target has a shadow. The shadow is destroyed with the target, or by
// destroy(). It lies directly below the target, and is hidden while the user works in another
// program: not every system that runs Windows programs keeps the order of windows among programs,
// and a shadow must never fall on the window of another one.
void create(HWND target);
void destroy(HWND target);

// Both do nothing without a shadow. The size is in pixels; the color is 0x00BBGGRR.
void setSize(HWND target, int size);
void setColor(HWND target, std::uint32_t color);

// What the shadow window keeps.
ShadowSettings settingsOf(HWND shadow);

}  // namespace zelvreg::controls::modShadow

#endif
