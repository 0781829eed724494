// The list of undo entries, which journals and backups of the fix list share. It lies in the
// registry, in the 32-bit view of HKEY_LOCAL_MACHINE, below the key "regscan" of the suite: "cnt"
// is the highest number given out, "dates" names the label of each number, "file" the file's stem
// of each label, "export" the stem of its safety export.
#ifndef ZELVREG_UNDO_UNDO_STORES_H
#define ZELVREG_UNDO_UNDO_STORES_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "form/Form42.h"

namespace zelvreg {

// Gives out the next number and notes label and stem under it, and the stem of the repair's safety
// export if it has one. Whether all of it could be kept.
bool registerUndoEntry(const std::string& label, const std::string& stem,
                       const std::string& exportStem = {});

// The highest number given out; of a larger one than 32 bits hold, the largest that they do.
std::int64_t highestUndoNumber();
// The numbers that there are entries of, rising, up to the highest that was given out, which may
// lie far beyond them; the first is looked at even if none was.
std::vector<std::int64_t> undoNumbers();
// The label as it is kept; blank for a number whose entry was removed.
std::string undoLabel(std::int64_t number);
// The stem of the file; empty for a label that is not known.
std::string undoStem(const std::string& label);
// The stem of its safety export; empty if it has none.
std::string undoExportStem(const std::string& label);
// Whether a stem is the name of a file and nothing else: it comes from the registry, and a folder
// in it would lead to any file of the computer.
bool isPlainStem(std::string_view stem);
// Takes an entry off the list. Its stem stays behind, and the highest number stays.
void removeUndoEntry(std::int64_t number);

// Whether journals are written: the state of Check1.
std::string undoSetting();
void keepUndoSetting(bool isOn);

// The path of a journal or a safety export with this stem, which must be plain to be opened.
std::string journalPath(const Form42& form, const std::string& stem);
std::string exportPath(const Form42& form, const std::string& stem);

}  // namespace zelvreg

#endif
