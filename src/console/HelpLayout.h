// How a help is shown.
#ifndef ZELVREG_CONSOLE_HELP_LAYOUT_H
#define ZELVREG_CONSOLE_HELP_LAYOUT_H

#include <cstddef>

#include "console/Paint.h"

namespace zelvreg::console {

struct HelpLayout {
  std::size_t width = 80;  // columns; no line is longer, unless one word alone is
  Paint paint = {};
};

}  // namespace zelvreg::console

#endif
