// Row 4: help files and help topics of snap-ins that are gone.
#ifndef ZELVREG_SCANNERS_HELP_FILES_H
#define ZELVREG_SCANNERS_HELP_FILES_H

namespace zelvreg {

struct Form42;

// Four sections, of which the last three number their rows from the same one on: each finding
// appends its location, while the other fields go to the row that the section counts. The last
// entry of a list of two or more is never looked at. A blank entry in the second section is
// skipped.
void Command7(Form42& form);

}  // namespace zelvreg

#endif
