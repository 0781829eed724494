#include "repair/RepairDriver.h"

#include <array>

#include "repair/RepairRoutines.h"
#include "repair/SafetyExport.h"
#include "scan/Findings.h"
#include "scan/Settings.h"
#include "text/Numbers.h"

namespace zelvreg {
namespace {

using Routine = void (*)(Form42& form);

// The firewall's comes first and takes every row of the kind that it shares with deleteusers.
constexpr std::array<Routine, 22> cascade{
    deletefirewall,     deletebitmap,     deleteclisidref2, deleteclissidref, deleteclissidref71,
    deleteclissidref72, deletefileext,    deleteprogref,    deleteiconref,    deletehelpchm,
    deletehelpfiles,    deletehelpfiles2, deletebadapppath, deleteshareddll,  deletefont,
    deleteusers,        deleteusers2,     deletemachine,    deleteuninstall,  deleteMRU,
    deleteMRUhist,      deleteMuiCache,
};

bool runsByItself(const Form42& form) {
  return form.recheckMode == 1 || form.autoMode > 0 || form.recheckFix > 0;
}

bool isConfirmed(const Form42& form) {
  return runsByItself(form) || form.dialogs.ask({.text = "Do You want to Fix selected items",
                                                 .icon = MessageIcon::Question,
                                                 .isQuestion = true,
                                                 .title = {}}) != Answer::No;
}

bool isExportKept(Form42& form) {
  if (!form.safeguards.exportsFirst || writeSafetyExport(form)) {
    return true;
  }
  if (!runsByItself(form)) {
    form.dialogs.tell(
        "Nothing was repaired: the safety export of what would go could not be written to the "
        "folder backup\\registry of the program. See that it can be written and the keys read, or "
        "repair without it.",
        MessageIcon::Exclamation);
  }
  return false;
}

// Whether the list still held rows before the last routine.
bool runCascade(Form42& form) {
  for (const Routine routine : cascade) {
    if (form.View2.count() == 0) {
      return false;
    }
    routine(form);
  }
  return true;
}

void keepStatistics(const Form42& form, std::int64_t countAtEntry) {
  const double before = leadingNumber(readSetting(settings::statistics, "count"));
  const auto repaired =
      static_cast<double>(countAtEntry - static_cast<std::int64_t>(form.View2.count()));
  keepSetting(settings::statistics, "count", numberText(before + repaired));
  keepSetting(settings::finish, "1", "1");
}

void repairTickedRows(Form42& form) {
  form.sparedKeys.clear();
  const auto countAtEntry = static_cast<std::int64_t>(form.View2.count());
  if (leadingNumber(readSetting(settings::regscan, "saveundo")) == 1) {
    form.Command21.click();
  }
  if (runCascade(form)) {
    form.Label3.caption = rowCountText(form) + " Problem(s) Still There ";
    form.Label3.refresh();
  }
  keepStatistics(form, countAtEntry);
  if (form.View2.count() == 0) {
    form.Label3.caption = "";
  }
}

}  // namespace

void runRepair(Form42& form) {
  form.isRepairStopped = false;
  if (!isConfirmed(form)) {
    return;
  }
  form.decideSafeguards.run();
  form.isRepairStopped = !isExportKept(form);
  if (!form.isRepairStopped) {
    repairTickedRows(form);
  }
}

void chameleonButton15_Click(Form42& form) {
  form.Command30.click();
  runRepair(form);
}

void cmd_fix_Click(Form42& form) {
  const std::array<Button*, 3> others{&form.cmd_search, &form.cmd_exclud, &form.cmd_start};
  for (Button* button : others) {
    button->enabled = false;
  }
  form.chameleonButton15.click();
  for (Button* button : others) {
    button->enabled = true;
  }
}

}  // namespace zelvreg
