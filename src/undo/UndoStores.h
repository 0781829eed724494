// The list of undo entries, which journals and backups of the fix list share. It lies in the
// registry, in the 32-bit view of HKEY_LOCAL_MACHINE, below the key "regscan" of the suite: "cnt"
// is the highest number given out, "dates" names the label of each number, "file" the file's stem
// of each label.
#ifndef ZELVREG_UNDO_UNDO_STORES_H
#define ZELVREG_UNDO_UNDO_STORES_H

#include <cstdint>
#include <string>

#include "form/Form42.h"

namespace zelvreg {

// Gives out the next number and notes label and stem under it.
void registerUndoEntry(const std::string& label, const std::string& stem);

// The highest number given out; of a larger one than 32 bits hold, the largest that they do.
std::int64_t highestUndoNumber();
// The label as it is kept; blank for a number whose entry was removed.
std::string undoLabel(std::int64_t number);
// The stem of the file; empty for a label that is not known.
std::string undoStem(const std::string& label);
// Takes an entry off the list. Its stem stays behind, and the highest number stays.
void removeUndoEntry(std::int64_t number);

// Whether journals are written: the state of Check1.
std::string undoSetting();
void keepUndoSetting(bool isOn);

// The path of a journal with this stem.
std::string journalPath(const Form42& form, const std::string& stem);

}  // namespace zelvreg

#endif
