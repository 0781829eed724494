#include "desktop/Peer.h"
#include "desktop/WindowOrder.h"

namespace zelvreg::desktop {

void orderChildren(HWND parent, OrderOfPlaces order) {
  std::vector<HWND> children;
  std::vector<Place> places;
  for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    if (const Peer* peer = Peer::of(child)) {
      const Control& control = peer->shownControl();
      children.push_back(child);
      places.push_back({control.left / twipsPerPixel, control.top / twipsPerPixel,
                        control.width / twipsPerPixel, control.height / twipsPerPixel});
    }
  }
  for (const std::size_t index : order(places)) {
    SetWindowPos(children[index], HWND_BOTTOM, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
  }
}

}  // namespace zelvreg::desktop
