#include "repair/RepairDriver.h"

#include <array>
#include <memory>

#include "evidence/ConfidenceSummary.h"
#include "form/Form42.h"
#include "languages/Texts.h"
#include "repair/RepairPlan.h"
#include "repair/RepairRoutines.h"
#include "repair/SafetyExport.h"
#include "scan/EventLog.h"
#include "scan/Findings.h"
#include "scan/OutcomeLine.h"
#include "scan/OwnPaths.h"
#include "scan/Policies.h"
#include "scan/Settings.h"
#include "text/Numbers.h"

namespace zelvreg {
namespace {

bool runsByItself(const Form42& form) {
  return form.recheckMode == 1 || form.autoMode > 0 || form.recheckFix > 0;
}

std::size_t hiddenTickedRows(const ListView& list) {
  std::size_t count = 0;
  for (std::size_t row = 1; list.hiddenCount() > 0 && row <= list.count(); ++row) {
    count += list.isHidden(row) && list.isChecked(row) ? 1 : 0;
  }
  return count;
}

std::string questionOf(const Form42& form) {
  std::string question = textOf(form, "fix-question");
  if (form.safeguards.careful) {
    question += "\n\n" + confidenceSummary(form).text(form);
  }
  if (const std::size_t hidden = hiddenTickedRows(form.View2); hidden > 0) {
    question += "\n\n" + textOf(form, "fix-hidden", {std::to_string(hidden)});
  }
  return question;
}

bool isConfirmed(const Form42& form) {
  return runsByItself(form) || form.dialogs.ask({.text = questionOf(form),
                                                 .icon = MessageIcon::Question,
                                                 .isQuestion = true,
                                                 .title = {}}) != Answer::No;
}

void tellRefusal(const Form42& form, const std::string& why) {
  reportEvent(form, LoggedEvent::RepairRefused, {why});
  if (!runsByItself(form)) {
    form.dialogs.tell(why, MessageIcon::Exclamation);
  }
}

// A scan whose exclusions could not be read lists what its user wants to keep.
bool areExclusionsKnown(const Form42& form) {
  if (!form.areExclusionsUnread || !form.safeguards.protects) {
    return true;
  }
  tellRefusal(form, textOf(form, "fix-no-exclusions", {unreadExclusions(form)}));
  return false;
}

bool isExportKept(Form42& form) {
  if (!form.safeguards.exportsFirst || writeSafetyExport(form, *form.repairPlan)) {
    return true;
  }
  tellRefusal(form, textOf(form, "fix-no-export"));
  return false;
}

// If undo information was asked for and cannot be written, nothing is repaired.
bool isUndoKept(Form42& form) {
  // One that cannot be read may ask for it.
  const auto setting = knownSetting(settings::regscan, undoPolicy);
  const bool isWanted = setting ? leadingNumber(*setting) == 1 : form.safeguards.exportsFirst;
  if (!undoByPolicy(form).value_or(isWanted)) {
    return true;
  }
  form.isJournalKept = true;
  form.Command21.click();
  if (form.isJournalKept || !form.safeguards.exportsFirst) {
    return true;
  }
  removeSafetyExport(form);
  tellRefusal(form, textOf(form, "fix-no-journal"));
  return false;
}

// Whether the list still had rows before the last routine.
bool runCascade(Form42& form) {
  for (const RepairRoutine& routine : repairCascade()) {
    if (form.View2.count() == 0) {
      return false;
    }
    routine.run(form);
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

// The record of a row that stayed may be gone by now, with what another row took.
void dropGoneRows(Form42& form, const RegistryState& registry) {
  form.View2.removeWhere([&](std::size_t row) {
    const RowPlan* plan = form.repairPlan->rowPlan(form, row);
    return plan != nullptr && plan->isGone(registry);
  });
}

void countOutcome(Form42& form, const RegistryState& registry) {
  RepairOutcome& outcome = form.repairOutcome;
  for (const RowPlan& plan : form.repairPlan->rows()) {
    const bool isGone = plan.isGone(registry);
    std::size_t& count = isGone               ? outcome.gone
                         : plan.isLeftAlone() ? outcome.leftAlone
                                              : outcome.noEffect;
    ++count;
    outcome.failed += !isGone && plan.shouldGo ? 1 : 0;
  }
}

void tellWhatStayed(const Form42& form) {
  const RepairOutcome& outcome = form.repairOutcome;
  if (runsByItself(form) || outcome.leftAlone + outcome.noEffect == 0) {
    return;
  }
  form.dialogs.tell(textOf(form, "fix-outcome",
                           {std::to_string(outcome.gone), std::to_string(outcome.leftAlone),
                            std::to_string(outcome.noEffect)}),
                    MessageIcon::Information);
}

void repairTickedRows(Form42& form) {
  const auto countAtEntry = static_cast<std::int64_t>(form.View2.count());
  const bool isListLeft = runCascade(form);
  if (form.safeguards.protects) {
    dropGoneRows(form, RegistryState());
  }
  if (isListLeft) {
    form.Label3.caption = textOf(form, "problems-left", {rowCountText(form)});
    form.Label3.refresh();
  }
  keepStatistics(form, countAtEntry);
  if (form.View2.count() == 0) {
    form.Label3.caption = "";
  }
}

void repairAndLookAgain(Form42& form) {
  repairTickedRows(form);
  countOutcome(form, RegistryState());
  reportRepair(form);
  showOutcome(form);
  if (form.safeguards.protects) {
    tellWhatStayed(form);
  }
}

}  // namespace

void runRepair(Form42& form) {
  form.isRepairStopped = false;
  if (!isConfirmed(form)) {
    return;
  }
  form.decideSafeguards.run();
  dropOutcome(form);
  form.repairOutcome = {};
  form.repairPlan = std::make_shared<RepairPlan>(form);
  form.exportStem.clear();
  form.isRepairStopped = !areExclusionsKnown(form) || !isExportKept(form) || !isUndoKept(form);
  if (!form.isRepairStopped) {
    repairAndLookAgain(form);
  }
  form.repairPlan.reset();
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
