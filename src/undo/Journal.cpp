#include "undo/Journal.h"

#include <algorithm>
#include <vector>

#include "form/Form42.h"
#include "runtime/DateTime.h"
#include "runtime/FileText.h"
#include "scan/Findings.h"
#include "text/Numbers.h"
#include "text/Text.h"
#include "undo/JournalFile.h"
#include "undo/UndoStores.h"

namespace zelvreg {
namespace {

// A root of any other name leaves the digit of the row before.
void setDigit(const std::string& rootName, std::string& digit) {
  const auto* root = std::ranges::find(journalRoots, rootWithLongName(trim(rootName)));
  if (root != journalRoots.end()) {
    digit = decimal(root - journalRoots.begin() + 1);
  }
}

void fillRecord(Form42& form, std::size_t row, std::string& digit) {
  setDigit(form.View2.text(row, rootNameColumn), digit);
  form.journalRecord = {.kind = form.View2.text(row, kindCodeColumn),
                        .hive = digit,
                        .key = form.View2.text(row, subKeyColumn),
                        .value = form.View2.text(row, badValueColumn),
                        .text = form.View2.text(row, locationColumn)};
}

}  // namespace

void writeJournal(Form42& form) {
  const DateTime now = localDateTime();
  const std::string time = dateText(now, ".") + " t " + timeText(now, ".");
  const std::string stamp = time + userSuffix(form);
  // The time is read again for the label, which may be a second later.
  const bool isListed = registerUndoEntry(
      time + " " + timeText(localDateTime(), ":") + userSuffix(form), stamp, form.exportStem);
  std::vector<JournalRecord> records;
  std::string digit;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    form.messages.doEvents();
    if (form.View2.isChecked(row)) {
      fillRecord(form, row, digit);
      records.push_back(form.journalRecord);
    }
  }
  const std::string path = journalPath(form, stamp);
  const auto before = contentToKeep(path);
  const bool isWritten =
      before && replaceFileText(path, journalFile(records, *before), FileReaders::Administrators);
  form.isJournalKept = isListed && isWritten;
}

void Check1_Click(Form42& form) { keepUndoSetting(form.Check1.value); }

}  // namespace zelvreg
