// The undo page: the list of journals, restoring one, removing one.
#ifndef ZELVREG_UNDO_UNDO_PAGE_H
#define ZELVREG_UNDO_UNDO_PAGE_H

#include <cstddef>

#include "form/Form42.h"

namespace zelvreg {

// Fills the page and shows it.
void chameleonButton1_Click(Form42& form);

void View3_ItemClick(Form42& form, std::size_t row);

// Writes the records of the journal at the row in Text3 back into the registry, as far as their
// five texts go: texts, and one number for shared DLLs. The journal stays, and so do the results.
void chameleonButton2_Click(Form42& form);

// Removes the journal at the row in Text3 with its file.
void chameleonButton3_Click(Form42& form);

}  // namespace zelvreg

#endif
