#include "undo/UndoPage.h"

#include <cmath>

#include "form/Form42.h"
#include "keys/RegistryImport.h"
#include "languages/Texts.h"
#include "roots/Roots.h"
#include "runtime/FileText.h"
#include "runtime/PrivateFiles.h"
#include "scan/EventLog.h"
#include "scan/OutcomeLine.h"
#include "scan/OwnPaths.h"
#include "scan/Policies.h"
#include "scan/Settings.h"
#include "text/Numbers.h"
#include "text/Pattern.h"
#include "text/Text.h"
#include "undo/JournalFile.h"
#include "undo/UndoContent.h"
#include "undo/UndoRestore.h"
#include "undo/UndoStores.h"

namespace zelvreg {
namespace {

std::size_t rowInText3(const Form42& form) {
  return static_cast<std::size_t>(std::max(0.0, leadingNumber(form.Text3.text())));
}

// A check box can be off, on or grayed; any other number is refused.
void showUndoSetting(Form42& form) {
  const auto decided = undoByPolicy(form);
  const double kept = std::nearbyint(leadingNumber(undoSetting()));
  if (decided) {
    form.Check1.value = *decided;
  } else if (kept >= 0 && kept <= 2) {
    form.Check1.value = kept != 0;
  }
  form.Check1.isLocked = decided.has_value();
  form.Check1.enabled = !form.Check1.isLocked;
}

// A copy of the fix list, say, is an entry from which nothing can be restored. It does not matter
// which of export and journal is to be restored, so that the rows keep their numbers.
bool isOffered(const Form42& form, const std::string& label) {
  return form.safeguards == asDescribed() || !undoContent(form, label).isNothing();
}

void listJournals(Form42& form) {
  for (const std::int64_t number : undoNumbers()) {
    form.messages.doEvents();
    const std::string label(trim(undoLabel(number)));
    if (!label.empty() && isOffered(form, label)) {
      form.View3.add(label);
    }
  }
}

// The first entry that matches the label as a pattern; the one after the last if none does. The
// empty text of a number without an entry may match too.
std::int64_t numberOfLabel(const std::string& label) {
  const std::string pattern = lowerCase(trim(label));
  const auto fits = [&pattern](const std::string& text) {
    return matchesPattern(lowerCase(trim(text)), pattern) != Match::No;
  };
  const bool doesHoleFit = fits("");
  std::int64_t next = 1;
  for (const std::int64_t number : undoNumbers()) {
    if ((number > next && doesHoleFit) || fits(undoLabel(number))) {
      return number > next && doesHoleFit ? next : number;
    }
    next = number + 1;
  }
  return next;
}

void tellRefusal(Form42& form, const std::string& text) {
  form.isUndoRefused = true;
  reportEvent(form, LoggedEvent::UndoRefused, {text});
  form.dialogs.tell(text, MessageIcon::Exclamation);
}

void tellEnd(Form42& form, const std::string& path) {
  reportEvent(form, LoggedEvent::RepairUndone, {path});
  form.dialogs.tell(textOf(form, "undo-finished"), MessageIcon::Information);
}

// The list of a portable copy says which journal and which export belong to an entry.
bool isListOpen(Form42& form) {
  const bool isOpen = isPortable() && couldOthersWrite(settingsFile());
  if (isOpen) {
    tellRefusal(form, textOf(form, "undo-folder-open", {form.programFolder}));
  }
  return isOpen;
}

void restoreExport(Form42& form, const std::string& path) {
  if (isListOpen(form)) {
    return;
  }
  if (couldOthersWrite(path)) {
    tellRefusal(form, textOf(form, "undo-export-open", {path}));
    return;
  }
  const RegistryImport import = importRegistryFile(path);
  if (import.isDone) {
    tellEnd(form, path);
  } else {
    tellRefusal(form, path + ": " + import.message);
  }
}

void restoreByJournal(Form42& form, const std::string& stem) {
  if (isListOpen(form)) {
    return;
  }
  if (!isPlainStem(stem)) {
    tellRefusal(form, textOf(form, "undo-no-file"));
    return;
  }
  const std::string path = journalPath(form, stem);
  const auto file = contentToKeep(path);
  if (!file) {
    tellRefusal(form, path + ": " + unreadFileMessage);
    return;
  }
  // Opening a journal that is gone creates it again.
  if (file->empty()) {
    replaceFileText(path, "", FileReaders::Administrators);
  }
  const std::size_t refused = restoreJournal(form, *file);
  if (refused > 0 && form.safeguards != asDescribed()) {
    tellRefusal(form, textOf(form, "undo-records-refused",
                             {path, decimal(static_cast<std::int64_t>(refused)),
                              decimal(static_cast<std::int64_t>(journalRecordCount(*file)))}));
    return;
  }
  tellEnd(form, path);
}

}  // namespace

void chameleonButton1_Click(Form42& form) {
  form.View3.clear();
  form.Frame3.left = form.Frame1.left;
  form.Frame3.top = form.Frame1.top;
  form.Frame3.width = form.Frame1.width;
  form.Frame3.height = form.Frame1.height;
  form.Frame1.visible = false;
  form.Frame2.visible = false;
  form.Picture1.visible = false;
  form.Frame3.visible = true;
  form.Frame7.visible = false;
  showUndoSetting(form);
  form.decideSafeguards.run();
  listJournals(form);
}

void View3_ItemClick(Form42& form, std::size_t row) {
  form.Text3.setText(decimal(static_cast<std::int64_t>(row)));
  form.chameleonButton3.enabled = true;
}

void chameleonButton2_Click(Form42& form) {
  form.decideSafeguards.run();
  form.isUndoRefused = false;
  const std::string label = form.View3.text(rowInText3(form), 0);
  const UndoContent content = undoContent(form, label);
  if (form.safeguards.undoesByExport && !content.exportPath.empty()) {
    restoreExport(form, content.exportPath);
  } else {
    restoreByJournal(form, undoStem(label));
  }
}

void undoLastRepair(Form42& form) {
  form.isUndoRefused = false;
  restoreExport(form, exportPath(form, form.exportStem));
  if (!form.isUndoRefused) {
    dropOutcome(form);
  }
}

void chameleonButton3_Click(Form42& form) {
  form.isUndoRefused = false;
  const std::size_t row = rowInText3(form);
  const std::string label = form.View3.text(row, 0);
  const std::int64_t number = numberOfLabel(label);
  const std::string stem = undoStem(label);
  const bool isFound = !trim(undoLabel(number)).empty();
  // To the letter, nobody is told.
  const bool tells = form.safeguards != asDescribed();
  // Of a list that cannot be read it is not known whose number it is.
  const bool isSafe = !tells || (isFound && !isUndoListUnread());
  const bool isRemoved = isSafe && removeUndoEntry(number);
  if (tells && !isRemoved) {
    tellRefusal(form, textOf(form, "undo-not-removed", {label}));
    return;
  }
  form.View3.remove(row);
  const std::string path = journalPath(form, stem);
  if (isPlainStem(stem) && !deleteFile(path) && tells) {
    tellRefusal(form, textOf(form, "undo-journal-left", {path}));
  }
}

}  // namespace zelvreg
