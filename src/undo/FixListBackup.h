// The copies of the fix list: a text file of the ticked rows for each time that the user clicks
// Fix.
#ifndef ZELVREG_UNDO_FIX_LIST_BACKUP_H
#define ZELVREG_UNDO_FIX_LIST_BACKUP_H

namespace zelvreg {

struct Form42;

// Writes the ticked rows to backup\fixreg in the program's folder and adds the copy to the undo
// list. The undo page cannot restore it. Copies are never removed.
void Command30_Click(Form42& form);

// Writes the values of one old copy back. Nothing calls it.
void Command31_Click(Form42& form);

}  // namespace zelvreg

#endif
