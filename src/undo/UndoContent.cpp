#include "undo/UndoContent.h"

#include <windows.h>

#include "runtime/FileText.h"
#include "runtime/PrivateFiles.h"
#include "scan/ExportPath.h"
#include "text/Wide.h"
#include "undo/JournalFile.h"
#include "undo/UndoRestore.h"
#include "undo/UndoStores.h"

namespace zelvreg {
namespace {

bool isFile(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(Wide(path).get());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

}  // namespace

UndoContent undoContent(const Form42& form, const std::string& label) {
  UndoContent content;
  content.user = undoUser(label);
  const std::string exportStem = undoExportStem(label);
  if (isPlainStem(exportStem) && isFile(exportPath(form, exportStem))) {
    content.exportPath = exportPath(form, exportStem);
    content.isExportOpen = couldOthersWrite(content.exportPath);
  }
  const std::string stem = undoStem(label);
  const auto journal =
      isPlainStem(stem) ? readFileText(journalPath(form, stem)) : std::optional<std::string>();
  if (journal) {
    content.isJournalThere = true;
    content.isJournalTorn = isTornJournal(*journal);
    content.records = journalRecordCount(*journal);
    content.restorable = restorableRecords(*journal);
  }
  return content;
}

}  // namespace zelvreg
