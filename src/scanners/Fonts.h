// Row 1: fonts whose file is gone.
#ifndef ZELVREG_SCANNERS_FONTS_H
#define ZELVREG_SCANNERS_FONTS_H

namespace zelvreg {

struct Form42;

// Reports each font value whose data names no file in the fonts folder. It assumes that it runs
// first and starts at row 1. Once started, it runs to its end.
void Command1(Form42& form);

}  // namespace zelvreg

#endif
