// Which fonts a text may be shown in.
#ifndef ZELVREG_DESKTOP_FONT_CHOICE_H
#define ZELVREG_DESKTOP_FONT_CHOICE_H

#include <string>
#include <vector>

#include "widgets/Control.h"

namespace zelvreg::desktop {

// The names of the fonts to try, the best first: the font's own, the usual one of the program, and
// those that Windows itself is shown in where the script of its charset is written.
std::vector<std::string> facesFor(const Font& font);

}  // namespace zelvreg::desktop

#endif
