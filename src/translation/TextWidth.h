// How wide a text is, without a screen: for checks that run on every system.
//
// The widths are those of Open Sans, whose proportions Segoe UI has. Where that font has no
// letters, it is the mean of the script in a usual one. A screen may draw a text a few hundredths
// wider or narrower.
#ifndef ZELVREG_TRANSLATION_TEXT_WIDTH_H
#define ZELVREG_TRANSLATION_TEXT_WIDTH_H

#include <string_view>

namespace zelvreg {

struct TextSize {
  double points = 9;
  bool isBold = false;
};

// The width in pixels at 96 dpi, without the mark of an access key.
double textWidth(std::string_view text, const TextSize& size);

// How many lines it takes when it wraps at blanks, or between characters that are as wide as high;
// a word that is wider than a line fits into no number of lines.
int linesOf(std::string_view text, const TextSize& size, double width);

}  // namespace zelvreg

#endif
