#include "undo/UndoContent.h"

#include "runtime/FileText.h"
#include "runtime/PrivateFiles.h"
#include "scan/OwnPaths.h"
#include "undo/JournalFile.h"
#include "undo/UndoRestore.h"
#include "undo/UndoStores.h"

namespace zelvreg {

UndoContent undoContent(const Form42& form, const std::string& label) {
  UndoContent content;
  content.user = undoUser(label);
  const std::string exportStem = undoExportStem(label);
  // One that cannot be looked at counts as there, so that nothing else is restored in its stead.
  if (isPlainStem(exportStem) && !isSurelyMissing(exportPath(form, exportStem))) {
    content.exportPath = exportPath(form, exportStem);
    content.isExportOpen = couldOthersWrite(content.exportPath);
  }
  const std::string stem = undoStem(label);
  if (!isPlainStem(stem)) {
    return content;
  }
  const auto journal = readFileText(journalPath(form, stem));
  content.isJournalUnreadable = !journal && !isSurelyMissing(journalPath(form, stem));
  if (journal) {
    content.isJournalThere = true;
    content.isJournalTorn = isTornJournal(*journal);
    content.records = journalRecordCount(*journal);
    content.restorable = restorableRecords(*journal);
  }
  return content;
}

}  // namespace zelvreg
