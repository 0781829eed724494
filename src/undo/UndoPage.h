// The undo page: the list of journals, restoring one, removing one.
#ifndef ZELVREG_UNDO_UNDO_PAGE_H
#define ZELVREG_UNDO_UNDO_PAGE_H

#include <cstddef>

namespace zelvreg {

struct Form42;

// Fills the page and shows it. Entries from which nothing can be restored are left out, unless all
// safeguards are lifted.
void chameleonButton1_Click(Form42& form);

void View3_ItemClick(Form42& form, std::size_t row);

// Restores the safety export of the entry at the row in Text3. If it has none, or if that safeguard
// is lifted, writes the records of its journal to the registry: texts, and one number for shared
// DLLs. Export, journal and results stay. isUndoRefused tells afterwards whether it failed.
void chameleonButton2_Click(Form42& form);

// Restores the safety export of the last repair, and tells the end in the same way. What was found
// to be wrong is told, and the offer stays.
void undoLastRepair(Form42& form);

// Removes the journal at the row in Text3 with its file. Its safety export stays. isUndoRefused
// tells afterwards whether the entry or its file is still there.
void chameleonButton3_Click(Form42& form);

}  // namespace zelvreg

#endif
