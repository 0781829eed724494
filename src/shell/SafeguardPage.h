// The check boxes of the safeguards: those on the page of the undo options, and "Careful" on the
// page of the scan options. A tick keeps a safeguard; a tick in the last box lifts all. What a
// policy decides is shown and cannot be changed.
#ifndef ZELVREG_SHELL_SAFEGUARD_PAGE_H
#define ZELVREG_SHELL_SAFEGUARD_PAGE_H

namespace zelvreg {

struct Form42;

// Binds the clicks of the boxes, each of which stores its setting. "Careful" also decides what a
// scan that runs will tick. When it is turned on, the rows that are unsure lose their ticks. It
// never adds one: some may have been taken away by hand, and Select All is there for that.
void bindSafeguardBoxes(Form42& form);

// Open the pages as their buttons do, with the boxes as they are now.
void openUndoOptions(Form42& form);
void openScanOptions(Form42& form);

}  // namespace zelvreg

#endif
