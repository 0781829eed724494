// Whether the mouse is over a window.
#ifndef ZELVREG_DESKTOP_HOVER_H
#define ZELVREG_DESKTOP_HOVER_H

#include <windows.h>

namespace zelvreg::desktop {

class Hover {
 public:
  // Takes in a message of the window. True if the mouse has come or gone.
  bool follow(HWND window, UINT message) {
    if (message == WM_MOUSEMOVE && !isOver) {
      TRACKMOUSEEVENT request{sizeof request, TME_LEAVE, window, 0};
      TrackMouseEvent(&request);
    } else if (message != WM_MOUSELEAVE || !isOver) {
      return false;
    }
    isOver = !isOver;
    return true;
  }

  explicit operator bool() const { return isOver; }

 private:
  bool isOver = false;
};

}  // namespace zelvreg::desktop

#endif
