// What can be restored from an undo entry.
#ifndef ZELVREG_UNDO_UNDO_CONTENT_H
#define ZELVREG_UNDO_UNDO_CONTENT_H

#include <cstddef>
#include <string>

namespace zelvreg {

struct Form42;

struct UndoContent {
  std::string user;            // whose HKEY_CURRENT_USER was repaired; empty if that is not known
  std::string exportPath;      // of the safety export that is there; else empty
  bool isExportOpen = false;   // somebody who is no administrator could have written it
  std::size_t records = 0;     // of the journal
  std::size_t restorable = 0;  // those of them that name a place that is written to
  bool isJournalThere = false;
  bool isJournalTorn = false;
  bool isJournalUnreadable = false;  // it is there, so the entry is more than its name

  [[nodiscard]] bool isNothing() const {
    return exportPath.empty() && restorable == 0 && !isJournalUnreadable;
  }
};

// By the entry's label. A file whose stem is not a plain name counts as missing.
UndoContent undoContent(const Form42& form, const std::string& label);

}  // namespace zelvreg

#endif
