// The check boxes of the safeguards, on the page of the undo options. A tick keeps a safeguard; a
// tick in the last box lifts all. What a policy decides is shown and cannot be changed.
#ifndef ZELVREG_SHELL_SAFEGUARD_PAGE_H
#define ZELVREG_SHELL_SAFEGUARD_PAGE_H

namespace zelvreg {

struct Form42;

// Binds the clicks of the boxes, each of which stores its setting.
void bindSafeguardBoxes(Form42& form);

// Opens the page as its button does, with the boxes as they are now.
void openOptionsPage(Form42& form);

}  // namespace zelvreg

#endif
