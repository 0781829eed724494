// Writing the undo journal of a repair.
#ifndef ZELVREG_UNDO_JOURNAL_H
#define ZELVREG_UNDO_JOURNAL_H

#include "form/Form42.h"

namespace zelvreg {

// Journals all ticked rows of View2, whatever their kind, and enters the journal into the list. The
// entry stands even if the file cannot be written; isJournalKept tells. Journals of one second
// share a file, which is written over from its start.
void Command21_Click(Form42& form);

// Keeps the option to write journals.
void Check1_Click(Form42& form);

}  // namespace zelvreg

#endif
