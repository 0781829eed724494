// The list of undo entries, which journals and copies of the fix list share. It is in the
// registry, in the 32-bit view of HKEY_LOCAL_MACHINE, below the key "regscan" of the suite: "cnt"
// is the highest number used, "dates" names the label of each number, "file" the file's stem
// of each label, "export" the stem of its safety export, "user" whose HKEY_CURRENT_USER it was.
#ifndef ZELVREG_UNDO_UNDO_STORES_H
#define ZELVREG_UNDO_UNDO_STORES_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg {

struct Form42;

// Uses the next number, and saves label and stem under it, the stem of the repair's safety export
// if it has one, and the current user if that is known. Whether all of it could be saved; no other
// entry is ever replaced.
bool registerUndoEntry(const std::string& label, const std::string& stem,
                       const std::string& exportStem = {});

// Whether anything of the list could not be read since undoNumbers() was called. It counts as
// missing.
bool isUndoListUnread();

// The highest number used, or the highest that 32 bits can hold.
std::int64_t highestUndoNumber();
// The numbers of the entries, ascending. The highest number used may be far above them. Number 1 is
// looked up even if none was used.
std::vector<std::int64_t> undoNumbers();
// The label as it is stored; blank for a number whose entry was removed.
std::string undoLabel(std::int64_t number);
// The stem of the file; empty for a label that is not known.
std::string undoStem(const std::string& label);
// The stem of its safety export; empty if it has none.
std::string undoExportStem(const std::string& label);
// The identifier of the user; empty for an entry that does not tell.
std::string undoUser(const std::string& label);
// To follow the stem and the label of an entry: several users may be repaired in one second.
std::string userSuffix(const Form42& form);
// Whether a stem is the name of a file and nothing else: it comes from the registry, and a folder
// in it would lead to any file of the computer.
bool isPlainStem(std::string_view stem);
// Removes an entry from the list. Its stem stays, and so does the highest number. Whether it is no
// longer there.
bool removeUndoEntry(std::int64_t number);

// Whether journals are written: the state of Check1.
std::string undoSetting();
void keepUndoSetting(bool isOn);

// The path of a journal with this stem, which must be plain to be opened.
std::string journalPath(const Form42& form, const std::string& stem);

}  // namespace zelvreg

#endif
