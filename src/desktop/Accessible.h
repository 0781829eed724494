// Tells screen readers and other programs what the windows of the program are. The system's own
// object answers everything; only what it cannot know about windows that draw themselves, or lists
// that hold no rows, comes from the peers.
#ifndef ZELVREG_DESKTOP_ACCESSIBLE_H
#define ZELVREG_DESKTOP_ACCESSIBLE_H

#include <windows.h>

namespace zelvreg::desktop {

// Has the window of a peer answer with the peer's facts.
void tellFacts(HWND window);

}  // namespace zelvreg::desktop

#endif
