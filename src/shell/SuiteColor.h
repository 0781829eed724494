// The color of the suite, which the forms use.
#ifndef ZELVREG_SHELL_SUITE_COLOR_H
#define ZELVREG_SHELL_SUITE_COLOR_H

#include <cstdint>

#include "widgets/Button.h"

namespace zelvreg {

struct Form42;

// The one that the registry names, or the usual one.
std::uint32_t suiteColor(Form42& form);

// Gives a button this color, at rest and under the mouse.
void giveColor(Button& button, std::uint32_t color);

}  // namespace zelvreg

#endif
