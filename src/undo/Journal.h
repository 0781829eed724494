// Writing the undo journal of a repair.
#ifndef ZELVREG_UNDO_JOURNAL_H
#define ZELVREG_UNDO_JOURNAL_H

namespace zelvreg {

struct Form42;

// Writes all ticked rows of View2, whatever their kind, to a journal and adds it to the list. The
// entry is added even if the file cannot be written; isJournalKept tells. Two journals of the same
// second share a file, which is overwritten from its start.
void writeJournal(Form42& form);

// Saves the option to write journals.
void Check1_Click(Form42& form);

}  // namespace zelvreg

#endif
