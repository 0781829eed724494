#include "shell/SafeguardPage.h"

#include "form/Form42.h"
#include "scan/SafeguardSources.h"
#include "scan/Settings.h"
#include "undo/UndoPage.h"

namespace zelvreg {
namespace {

constexpr std::size_t letterBox = safeguardBoxCount;

void showSafeguards(Form42& form) {
  const Safeguards decided = safeguardsNow(form);
  const bool isLetter = isLetterInForce(form);
  for (std::size_t index = 0; index < letterBox; ++index) {
    const SafeguardRule& rule = safeguardRules[index];
    form.SafeguardBoxes[index].value = decided.*rule.safeguard != liftedValue(rule);
    form.SafeguardBoxes[index].enabled = !isLetter && !isSetByPolicy(form, rule);
  }
  form.SafeguardBoxes[letterBox].value = isLetter;
  form.SafeguardBoxes[letterBox].enabled = !isLetterSetByPolicy(form);
}

// If the setting could not be stored, the box shows the old one again.
void keep(Form42& form, std::size_t index) {
  const bool isTicked = form.SafeguardBoxes[index].value;
  if (index == letterBox) {
    keepSetting(settings::regscan, letterSetting, isTicked ? letterText : "0");
  } else {
    const SafeguardRule& rule = safeguardRules[index];
    keepSetting(settings::regscan, rule.setting, isTicked ? rule.keepingText : rule.liftingText);
  }
  showSafeguards(form);
}

}  // namespace

void bindSafeguardBoxes(Form42& form) {
  for (std::size_t index = 0; index < form.SafeguardBoxes.size(); ++index) {
    form.SafeguardBoxes[index].bind([&form, index] { keep(form, index); });
  }
}

void openOptionsPage(Form42& form) {
  chameleonButton1_Click(form);
  showSafeguards(form);
}

}  // namespace zelvreg
