#include "undo/UndoPage.h"

#include <windows.h>

#include <cmath>

#include "registry/Hives.h"
#include "runtime/FileText.h"
#include "text/Numbers.h"
#include "text/Pattern.h"
#include "text/Text.h"
#include "undo/JournalFile.h"
#include "undo/UndoRestore.h"
#include "undo/UndoStores.h"

namespace zelvreg {
namespace {

std::size_t rowInText3(const Form42& form) {
  return static_cast<std::size_t>(std::max(0.0, leadingNumber(form.Text3.text())));
}

// A check box knows off, on and grayed; any other number is refused.
void showUndoSetting(Form42& form) {
  const double kept = std::nearbyint(leadingNumber(undoSetting()));
  if (kept >= 0 && kept <= 2) {
    form.Check1.value = kept != 0;
  }
}

void listJournals(Form42& form) {
  const std::int64_t highest = highestUndoNumber();
  std::int64_t number = 1;
  do {
    form.messages.doEvents();
    // A removed entry leaves a hole.
    const std::string label(trim(undoLabel(number)));
    if (!label.empty()) {
      form.View3.add(label);
    }
    ++number;
  } while (number <= highest);
}

// The first entry that the label, read as a pattern, fits; behind the last one if none does.
std::int64_t numberOfLabel(const std::string& label) {
  const std::string pattern = lowerCase(trim(label));
  const std::int64_t highest = highestUndoNumber();
  std::int64_t number = 1;
  while (number <= highest &&
         matchesPattern(lowerCase(trim(undoLabel(number))), pattern) == Match::No) {
    ++number;
  }
  return number;
}

}  // namespace

void chameleonButton1_Click(Form42& form) {
  form.View3.clear();
  form.Frame3.left = form.Frame1.left;
  form.Frame3.top = form.Frame1.top;
  form.Frame3.width = form.Frame1.width;
  form.Frame3.height = form.Frame1.height;
  form.Frame1.visible = false;
  form.Frame3.visible = true;
  form.Frame7.visible = false;
  showUndoSetting(form);
  listJournals(form);
}

void View3_ItemClick(Form42& form, std::size_t row) {
  form.Text3.setText(decimal(static_cast<std::int64_t>(row)));
  form.chameleonButton3.enabled = true;
}

void chameleonButton2_Click(Form42& form) {
  const std::string label = form.View3.text(rowInText3(form), 0);
  const std::string path = journalPath(form, undoStem(label));
  auto file = readFileText(path);
  if (!file) {
    // Opening a journal that is gone makes it anew.
    appendFileText(path, "");
    file.emplace();
  }
  restoreJournal(form, *file);
  form.dialogs.tell("Finished Retriving undo data", MessageIcon::Information);
}

void chameleonButton3_Click(Form42& form) {
  const std::size_t row = rowInText3(form);
  const std::string label = form.View3.text(row, 0);
  const std::int64_t number = numberOfLabel(label);
  DeleteFileA(journalPath(form, undoStem(label)).c_str());
  form.View3.remove(row);
  removeUndoEntry(number);
}

}  // namespace zelvreg
