// The bytes of an undo journal: records of one size, one behind the other, and nothing else.
// docs/journal.md tells the format field by field.
#ifndef ZELVREG_UNDO_JOURNAL_FILE_H
#define ZELVREG_UNDO_JOURNAL_FILE_H

#include <cstddef>
#include <string>
#include <string_view>

#include "form/Form42.h"

namespace zelvreg {

inline constexpr std::size_t journalRecordSize = 302;

// Each field cut on the right to its width, or filled with blanks.
std::string journalBytes(const JournalRecord& record);

// The fields of record `number`, counted from 1, without the blanks around them. What the file no
// longer holds reads as empty.
JournalRecord journalRecordAt(std::string_view file, std::size_t number);

// How many records a file of this size has: the nearest whole number, a half going to the even one.
std::size_t journalRecordCount(std::size_t fileSize);

// Whether the file ends within a record.
bool isTornJournal(std::size_t fileSize);

}  // namespace zelvreg

#endif
