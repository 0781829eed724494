// The bytes of an undo journal: records of one size, one behind the other, in the machine's code
// page, or in UTF-8 behind a byte order mark (runtime/OwnText.h). docs/journal.md tells the format
// field by field.
#ifndef ZELVREG_UNDO_JOURNAL_FILE_H
#define ZELVREG_UNDO_JOURNAL_FILE_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "form/Form42.h"

namespace zelvreg {

inline constexpr std::size_t journalRecordSize = 302;

// The bytes of a journal with these records, written over the beginning of the one that was there.
// Each field is cut on the right to its width in bytes, between two characters, or filled with
// blanks. All of the file is UTF-8 as soon as one text of it needs that.
std::string journalFile(const std::vector<JournalRecord>& records, std::string_view before = {});

// The fields of record `number`, counted from 1, without the blanks around them. What the file no
// longer holds reads as empty.
JournalRecord journalRecordAt(std::string_view file, std::size_t number);

// How many records a file has by its size: the nearest whole number, a half going to the even one.
std::size_t journalRecordCount(std::string_view file);

// Whether the file ends within a record.
bool isTornJournal(std::string_view file);

}  // namespace zelvreg

#endif
