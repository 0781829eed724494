// The check boxes of the safeguards, on the page of the undo options. A tick keeps a safeguard;
// that of the last box lifts all. What a policy has decided is shown and cannot be changed.
#ifndef ZELVREG_SHELL_SAFEGUARD_PAGE_H
#define ZELVREG_SHELL_SAFEGUARD_PAGE_H

#include "form/Form42.h"

namespace zelvreg {

// Binds the presses of the boxes, each of which keeps its setting.
void bindSafeguardBoxes(Form42& form);

// Opens the page as its own press does, with the boxes as they hold now.
void openOptionsPage(Form42& form);

}  // namespace zelvreg

#endif
