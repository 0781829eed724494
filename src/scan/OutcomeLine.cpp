#include "scan/OutcomeLine.h"

#include "form/Form42.h"
#include "languages/Texts.h"

namespace zelvreg {
namespace {

void showSentence(Form42& form, bool isShown) {
  form.Label10.visible = !isShown;
  form.OutcomeText.visible = isShown;
}

std::string sentence(const Form42& form) {
  const RepairOutcome& outcome = form.repairOutcome;
  return textOf(form, "repair-result",
                {std::to_string(outcome.gone), std::to_string(outcome.noEffect),
                 std::to_string(outcome.leftAlone)});
}

}  // namespace

void showOutcome(Form42& form) {
  if (form.safeguards == asDescribed()) {
    return;
  }
  const RepairOutcome& outcome = form.repairOutcome;
  form.OutcomeText.caption = sentence(form);
  form.outcomeRevision = form.View2.revision();
  form.UndoRepair.visible =
      outcome.hasBegun && form.safeguards.undoesByExport && !form.exportStem.empty();
  showSentence(form, true);
}

void retellOutcome(Form42& form) {
  if (form.OutcomeText.visible) {
    form.OutcomeText.caption = sentence(form);
  }
}

void dropOutcome(Form42& form) {
  form.OutcomeText.caption = "";
  form.UndoRepair.visible = false;
  showSentence(form, false);
}

void dropOldOutcome(Form42& form) {
  if (form.OutcomeText.visible && form.outcomeRevision != form.View2.revision()) {
    dropOutcome(form);
  }
}

}  // namespace zelvreg
