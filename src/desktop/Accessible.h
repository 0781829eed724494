// Tells screen readers and other programs what the windows of the program are. The system's own
// object answers everything; only what it cannot know about windows that draw themselves, or lists
// that hold no rows, comes from the peers.
#ifndef ZELVREG_DESKTOP_ACCESSIBLE_H
#define ZELVREG_DESKTOP_ACCESSIBLE_H

#include <windows.h>

namespace zelvreg::desktop {

// Has the window of a peer answer with the peer's facts.
void tellFacts(HWND window);

// Has screen readers read a text aloud when it changes, once they have ended what they say. Older
// systems than Windows 8 know no such texts.
void makeLive(HWND window);
// After the text of such a window has changed.
void tellChange(HWND window);

}  // namespace zelvreg::desktop

#endif
