// Puts the windows of controls into the order in which the Tab key goes through them.
#ifndef ZELVREG_DESKTOP_WINDOW_ORDER_H
#define ZELVREG_DESKTOP_WINDOW_ORDER_H

#include <windows.h>

#include "desktop/TabOrder.h"

namespace zelvreg::desktop {

using OrderOfPlaces = std::vector<std::size_t> (*)(const std::vector<Place>& places);

// The child windows of a window that have peers, by the places of their controls. Others stay above
// them.
void orderChildren(HWND parent, OrderOfPlaces order = readingOrder);

}  // namespace zelvreg::desktop

#endif
