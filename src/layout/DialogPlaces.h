// Where the texts of the two small forms stand, in pixels at 96 dpi.
#ifndef ZELVREG_LAYOUT_DIALOG_PLACES_H
#define ZELVREG_LAYOUT_DIALOG_PLACES_H

#include "layout/Layout.h"

namespace zelvreg::desktop {

inline constexpr Place dialogTitle{18, 10, 410, 24};

// The dialog in which an exclusion is typed.
inline constexpr Place exclusionPrompt{20, 58, 440, 20};
inline constexpr Place addExclusion{160, 130, 160, 32};
inline constexpr Place cancelExclusion{330, 130, 130, 32};

// The About dialog: what the program does, and the words before each of its three links, the first
// being 0.
inline constexpr Place aboutSummary{24, 94, 432, 40};
constexpr Place aboutWords(int line) { return {24, 150 + 34 * line, 170, 20}; }
constexpr Place aboutLink(int line) { return {200, aboutWords(line).top, 256, 20}; }

}  // namespace zelvreg::desktop

#endif
