#include "scan/ScanDriver.h"

#include <algorithm>
#include <string>
#include <vector>

#include "form/Form42.h"
#include "languages/Texts.h"
#include "registry/SubkeyEnumerators.h"
#include "scan/AutomaticEnd.h"
#include "scan/CategoryTable.h"
#include "scan/EventLog.h"
#include "scan/Findings.h"
#include "scan/Policies.h"
#include "scan/Resolver.h"
#include "scan/ScanPanel.h"
#include "scan/Settings.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::uint32_t underTestColor = 255;
constexpr std::uint32_t soundColor = 0;
// Rows up to this one move the progress bar when they are done, those after it when they begin.
constexpr std::size_t lastRowCountedWhenDone = 10;

int countCheckedRows(const ListView& list) {
  int count = 0;
  for (std::size_t row = 1; row <= list.count(); ++row) {
    count += list.isChecked(row) ? 1 : 0;
  }
  return count;
}

void resetRows(Form42& form) {
  // A status is never updated in place: the newest sub-item of the column is the one shown.
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.View1.addSubItem(row, statusColumn, "", "cl");
  }
  form.Bar1.setMaximum(countCheckedRows(form.View1));
  form.orubutton2.enabled = false;
  form.chameleonButton9.enabled = false;
  form.Label7.caption = textOf(form, "choose-entry");
  form.Label5.caption = textOf(form, "no-entry");
  form.categoryFound = 0;
  form.Label3.caption = "";
  form.Label3.refresh();
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.messages.doEvents();
    form.View1.setText(row, problemsColumn, "");
  }
}

// A policy that has come since the program started, and ticks that a caller has set.
void untickForbiddenRows(Form42& form) {
  const auto allowed = categoriesByPolicy(form);
  for (std::size_t row = 1; allowed && row <= form.View1.count(); ++row) {
    if (!allowed->contains(row)) {
      form.View1.setLocked(row, false);
      form.View1.setChecked(row, false);
    }
    form.View1.setLocked(row, true);
  }
}

bool hasCheckedRow(Form42& form) {
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.messages.doEvents();
    if (form.View1.isChecked(row)) {
      return true;
    }
  }
  return false;
}

void clearResults(Form42& form) {
  form.Text1.setText("0");
  form.List1.clear();
  form.List2.clear();
  form.View2.clear();
  form.filesAskedIn.fill(0);
  form.Label2[4].refresh();
  form.Label2[3].refresh();
}

void advanceBar(Form42& form) { form.Bar1.setValue(form.Bar1.value() + 1); }

void testRow(Form42& form, std::size_t row, const Category& category) {
  form.testedRow = row;
  form.View1.setRowColor(row, underTestColor);
  form.cancelRequested = false;
  form.isProviderSilent = false;
  form.View1.ensureVisible(row);
  if (row > lastRowCountedWhenDone) {
    advanceBar(form);
  }
  form.View1.addSubItem(row, statusColumn, "Testing", "ex");
  const std::size_t askedBefore = form.filesAsked;
  for (const EntryPointOf routine : category.routines) {
    if (routine != nullptr) {
      routine(form).run();
    }
  }
  form.filesAskedIn[row] = form.filesAsked - askedBefore;
  form.View1.addSubItem(row, statusColumn, "Finished", "ch");
  if (row <= lastRowCountedWhenDone) {
    advanceBar(form);
  }
  if (leadingNumber(form.View1.text(row, problemsColumn)) == 0) {
    form.View1.setRowColor(row, soundColor);
  }
}

void testRows(Form42& form) {
  const MemoryOfScan memory(form);
  for (std::size_t row = 1; row <= categories().size() && !isStopAsked(form); ++row) {
    if (form.View1.isChecked(row)) {
      testRow(form, row, categoryAt(row));
    }
  }
  form.testedRow = 0;
}

void endScan(Form42& form, bool isWhole) {
  if (form.View2.count() == 0 && form.recheckMode != 1) {
    form.Frame1.visible = true;
    form.Frame3.visible = false;
    form.Frame7.visible = false;
    form.Frame2.visible = false;
    form.Picture1.visible = false;
    form.cancelRequested = true;
  }
  if (endsItself(form)) {
    reportScan(form, isWhole);
  }
  endAutomaticScan(form);
  // After the automatic modes, which see and repair what the user has excluded.
  form.Command29.click();
  reportScan(form, isWhole);
  closeScanPanel(form);
}

}  // namespace

void runScan(Form42& form) {
  form.decideSafeguards.run();
  untickForbiddenRows(form);
  openScanPanel(form);
  const std::string stateBefore = form.Text2.text();
  // From here on a click on Cancel counts, also one before the first row.
  form.Text2.setText("1");
  resetRows(form);
  if (!hasCheckedRow(form)) {
    form.Text2.setText(stateBefore);
    form.dialogs.tell(textOf(form, "scan-nothing-chosen"), MessageIcon::Information);
    return;
  }
  clearResults(form);
  testRows(form);
  endScan(form, !isStopAsked(form));
}

void saveSelection(const Form42& form) {
  for (std::size_t row = 1; row <= categories().size(); ++row) {
    if (!form.View1.isLocked(row)) {
      keepSetting(settings::selection, std::string(categoryAt(row).valueName),
                  form.View1.isChecked(row) ? "1" : "0");
    }
  }
}

void restoreSelection(Form42& form) {
  std::vector<std::string> stored;
  for (const Category& category : categories()) {
    stored.push_back(readSetting(settings::selection, std::string(category.valueName)));
  }
  // A user who has never chosen wants to see what there is. A suite has chosen by its mode.
  const bool isFirstStart = form.safeguards != asDescribed() && form.commandText.empty() &&
                            std::ranges::all_of(stored, &std::string::empty);
  for (std::size_t row = 1; row <= stored.size(); ++row) {
    // A policy that is gone has left its locks.
    form.View1.setLocked(row, false);
    form.View1.setChecked(row, isFirstStart || leadingNumber(stored[row - 1]) == 1);
  }
  applyCategoryPolicy(form);
}

void applyCategoryPolicy(Form42& form) {
  const auto decided = categoriesByPolicy(form);
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.View1.setLocked(row, false);
    if (decided) {
      form.View1.setChecked(row, decided->contains(row));
      form.View1.setLocked(row, true);
    }
  }
}

void cmd_start_Click(Form42& form) {
  form.cancelRequested = true;
  form.Label2[4].refresh();
  form.Label2[3].refresh();
  // Cancels first, so that a scan that is still running ends before the new one begins.
  form.chameleonButton12.click();
  enableFindingCommands(form, false);
  enableIdleCommands(form, false);
  runScan(form);
}

void cmd_cancel_Click(Form42& form) {
  form.cancelRequested = true;
  form.chameleonButton12.click();
  if (form.View2.count() > 0) {
    form.chameleonButton16.click();
    form.tickByConfidence.run();
    enableFindingCommands(form, true);
  }
  enableIdleCommands(form, true);
}

void chameleonButton12_Click(Form42& form) {
  form.Frame8.visible = false;
  showResultsPage(form);
  form.chameleonButton11.enabled = true;
  form.orubutton1.enabled = true;
  form.cancelRequested = true;
  form.Text2.setText("2");
}

}  // namespace zelvreg
