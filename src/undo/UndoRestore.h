// Writing the records of a journal back.
#ifndef ZELVREG_UNDO_UNDO_RESTORE_H
#define ZELVREG_UNDO_UNDO_RESTORE_H

#include <cstddef>
#include <string_view>

namespace zelvreg {

struct Form42;

// Restores each record according to its kind of two characters. An empty file counts as one record,
// which writes nothing. All writes go to the 32-bit view. Gives how many of them were refused.
std::size_t restoreJournal(Form42& form, std::string_view file);

// How many of its records name a root that is written to.
std::size_t restorableRecords(std::string_view file);

}  // namespace zelvreg

#endif
