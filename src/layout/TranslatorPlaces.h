// Where the controls of the program for translators stand, in pixels at 96 dpi.
#ifndef ZELVREG_LAYOUT_TRANSLATOR_PLACES_H
#define ZELVREG_LAYOUT_TRANSLATOR_PLACES_H

#include "layout/Layout.h"

namespace zelvreg::desktop::translatorPlaces {

inline constexpr Place title{18, 10, 880, 24};
inline constexpr Place close{916, 6, 36, 32};
inline constexpr Place languageWord{20, 58, 110, 20};
inline constexpr Place language{134, 56, 200, 24};
inline constexpr Place open{346, 53, 130, 30};
inline constexpr Place create{484, 53, 150, 30};
inline constexpr Place fileInfo{646, 58, 294, 20};
inline constexpr Place charsetWord{20, 96, 160, 20};
inline constexpr Place charset{184, 94, 120, 24};
inline constexpr Place nameWord{320, 96, 170, 20};
inline constexpr Place name{494, 93, 190, 26};
inline constexpr Place utf8{704, 96, 236, 20};
inline constexpr Place onlyWork{20, 132, 420, 20};
inline constexpr Place count{450, 132, 490, 20};
inline constexpr Place list{20, 158, 920, 268};
inline constexpr Place englishWord{20, 438, 110, 20};
inline constexpr Place englishText{134, 438, 806, 54};
inline constexpr Place translationWord{20, 502, 110, 20};
inline constexpr Place translation{134, 499, 806, 26};
inline constexpr Place remark{134, 532, 806, 20};
inline constexpr Place next{20, 586, 280, 34};
inline constexpr Place save{630, 586, 150, 34};
inline constexpr Place saveAs{790, 586, 150, 34};

inline constexpr std::array columnWidths{220, 240, 240, 180};

}  // namespace zelvreg::desktop::translatorPlaces

#endif
