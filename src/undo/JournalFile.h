// The bytes of an undo journal: records of one size, one after the other, in the machine's code
// page, or in UTF-8 with a byte order mark (runtime/OwnText.h). docs/journal.md tells the format
// field by field.
#ifndef ZELVREG_UNDO_JOURNAL_FILE_H
#define ZELVREG_UNDO_JOURNAL_FILE_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "form/JournalRecord.h"
#include "roots/Roots.h"

namespace zelvreg {

inline constexpr std::size_t journalRecordSize = 302;

// The roots that a record names by a digit, from 1 on.
inline constexpr std::array journalRoots{HiveHandle::LocalMachine, HiveHandle::ClassesRoot,
                                         HiveHandle::CurrentUser, HiveHandle::Users};

// The bytes of a journal after these records are written over the start of `before`. Each field is
// cut on the right to its width in bytes, between two characters, or filled with blanks. The whole
// file is UTF-8 if one of its texts requires it.
std::string journalFile(const std::vector<JournalRecord>& records, std::string_view before = {});

// The fields of record `number`, counted from 1, without the blanks around them. What the file no
// longer holds reads as empty.
JournalRecord journalRecordAt(std::string_view file, std::size_t number);

// How many records a file of this size has: the nearest whole number, a half to the even one.
std::size_t journalRecordCount(std::string_view file);

// Whether the file ends within a record.
bool isTornJournal(std::string_view file);

}  // namespace zelvreg

#endif
