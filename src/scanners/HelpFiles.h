// Row 4: help files and help topics of snap-ins that are gone.
#ifndef ZELVREG_SCANNERS_HELP_FILES_H
#define ZELVREG_SCANNERS_HELP_FILES_H

namespace zelvreg {

struct Form42;

// Four sections. Each finding appends its location, but its other fields go to the row that the
// section counts, and the last three count from the same row. The last entry of a list of two or
// more is never tested. A blank entry in the second section is skipped.
void Command7(Form42& form);

}  // namespace zelvreg

#endif
