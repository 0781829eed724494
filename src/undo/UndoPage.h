// The undo page: the list of journals, restoring one, removing one.
#ifndef ZELVREG_UNDO_UNDO_PAGE_H
#define ZELVREG_UNDO_UNDO_PAGE_H

#include <cstddef>

#include "form/Form42.h"

namespace zelvreg {

// Fills the page and shows it. Entries from which nothing can be restored are left out, unless all
// safeguards are lifted.
void chameleonButton1_Click(Form42& form);

void View3_ItemClick(Form42& form, std::size_t row);

// Restores the safety export of the entry at the row in Text3. Where it has none, and where the
// safeguard for that is lifted, the records of its journal are written back into the registry, as
// far as their five texts go: texts, and one number for shared DLLs. Export and journal stay, and
// so do the results. isUndoRefused tells afterwards what could not be done.
void chameleonButton2_Click(Form42& form);

// Removes the journal at the row in Text3 with its file. Its safety export stays.
void chameleonButton3_Click(Form42& form);

}  // namespace zelvreg

#endif
