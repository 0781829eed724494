#include "scan/Findings.h"

#include "form/Form42.h"
#include "languages/Texts.h"
#include "registry/SubkeyEnumerators.h"
#include "scan/CategoryTable.h"
#include "scan/Settings.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

void selectAll(ListView& list) {
  list.setFocus();
  for (std::size_t row = 1; row <= list.count(); ++row) {
    if (!list.isHidden(row)) {
      list.setChecked(row, true);
    }
  }
  list.setFocus();
}

void selectNone(ListView& list) {
  for (std::size_t row = 1; row <= list.count(); ++row) {
    if (!list.isHidden(row)) {
      list.setChecked(row, false);
      list.setSelected(row, false);
    }
  }
}

}  // namespace

void serveUntilStop(Form42& form, std::size_t row) {
  if (row % mostUnservedRows == 0 && !isStopAsked(form)) {
    form.messages.doEvents();
  }
}

std::size_t nextRow(const Form42& form) {
  return static_cast<std::size_t>(leadingNumber(form.Text1.text())) + 1;
}

void addFinding(Form42& form, ScannerRun& run, const Finding& finding) {
  if (form.isProviderSilent) {
    return;
  }
  Finding listed = finding;
  listed.badValue = trim(finding.badValue);
  form.List2.add(listed.badValue);
  addRow(form, run, listed);
  countInTotal(form, run.total);
}

void addRow(Form42& form, ScannerRun& run, const Finding& finding) {
  if (form.isProviderSilent) {
    return;
  }
  const std::size_t added = form.View2.add(finding.location);
  const std::size_t row = run.fields == FieldsGoTo::RowJustAdded ? added : run.row;
  form.View2.setText(row, badValueColumn, finding.badValue);
  form.View2.setText(row, kindCodeColumn, finding.kindCode);
  form.View2.setText(row, rootNameColumn, finding.rootName);
  form.View2.setText(row, subKeyColumn, finding.subKey);
  form.View2.setSmallIcon(row, finding.iconKey);
  if (run.scroll != ScrollsTo::Nothing) {
    form.View2.ensureVisible(run.scroll == ScrollsTo::RowJustAdded ? added : run.row);
  }
  ++run.row;
  ++run.found;
}

void countInTotal(Form42& form, TotalIsSaved saved) {
  ++form.totalFound;
  form.totalFoundText = decimal(form.totalFound);
  if (saved == TotalIsSaved::AtEachFinding) {
    saveTotalFound(form);
  }
}

void clearTotal(Form42& form) {
  form.totalFound = 0;
  form.totalFoundText = decimal(form.totalFound);
}

void saveTotalFound(const Form42& form) {
  keepSetting(settings::runningTotal, "reg-count", form.totalFoundText);
}

std::string fullKey(const Form42& form, std::size_t row) {
  if (row < 1 || row > form.View2.count()) {
    return {};
  }
  return form.View2.text(row, rootNameColumn) + "\\" + form.View2.text(row, subKeyColumn);
}

std::string rowCountText(const Form42& form) {
  return decimal(static_cast<std::int64_t>(form.View2.count()));
}

std::string problemsFoundText(const Form42& form) {
  return textOf(form, "problems-found", {rowCountText(form)});
}

std::string totalFoundCaption(const Form42& form) { return textOf(form, "total-found"); }

void storeRowCount(Form42& form) { form.Text1.setText(rowCountText(form)); }

void showCaption(Form42& form, std::size_t row) {
  form.Label4.caption = textOf(form, categoryAt(row).caption);
}

void showProblems(Form42& form, std::size_t row, std::int64_t count) {
  form.View1.setText(row, problemsColumn, decimal(count));
}

void showFound(Form42& form, std::size_t row, const ScannerRun& run) {
  if (run.found > 0) {
    showProblems(form, row, run.found);
  }
}

void showNothingFound(Form42& form, std::size_t row, const ScannerRun& run) {
  if (run.found == 0) {
    showProblems(form, row, 0);
  }
}

void chameleonButton16_Click(Form42& form) { selectAll(form.View2); }

void chameleonButton17_Click(Form42& form) { selectNone(form.View2); }

void chameleonButton21_Click(Form42& form) { selectAll(form.View1); }

void chameleonButton22_Click(Form42& form) { selectNone(form.View1); }

}  // namespace zelvreg
