// The order in which the Tab key goes through the controls of a window: as one reads them.
#ifndef ZELVREG_DESKTOP_TAB_ORDER_H
#define ZELVREG_DESKTOP_TAB_ORDER_H

#include <cstddef>
#include <vector>

#include "layout/Layout.h"

namespace zelvreg::desktop {

// The indexes of places, line by line, each line from its beginning. Places whose middles are about
// as high are in one line; those in the same place keep their order.
std::vector<std::size_t> readingOrder(const std::vector<Place>& places);

// The same for the main window, whose areas are read one after the other: the title, the command
// bar, the side bar, the pages.
std::vector<std::size_t> readingOrderOfMainWindow(const std::vector<Place>& places);

}  // namespace zelvreg::desktop

#endif
