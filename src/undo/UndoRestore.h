// Writing the records of a journal back.
#ifndef ZELVREG_UNDO_UNDO_RESTORE_H
#define ZELVREG_UNDO_UNDO_RESTORE_H

#include <cstddef>
#include <string_view>

namespace zelvreg {

struct Form42;

// Acts on each record by its kind of two characters. The first record is looked at even in an empty
// file, which writes nothing. All writes go to the 32-bit view.
void restoreJournal(Form42& form, std::string_view file);

// How many of its records name a root that is written to.
std::size_t restorableRecords(std::string_view file);

}  // namespace zelvreg

#endif
