#include "shell/SafeguardPage.h"

#include <vector>

#include "evidence/SecondLook.h"
#include "form/Form42.h"
#include "scan/SafeguardSources.h"
#include "scan/Settings.h"
#include "shell/Navigation.h"
#include "undo/UndoPage.h"

namespace zelvreg {
namespace {

constexpr std::size_t letterBox = safeguardBoxCount;

struct RuleBox {
  CheckBox& box;
  const SafeguardRule& rule;
};

RuleBox carefulBox(Form42& form) { return {form.CarefulBox, safeguardRule(&Safeguards::careful)}; }

// The boxes of one safeguard each.
std::vector<RuleBox> ruleBoxes(Form42& form) {
  std::vector<RuleBox> boxes{carefulBox(form)};
  for (std::size_t index = 0; index < letterBox; ++index) {
    boxes.push_back({form.SafeguardBoxes[index], safeguardRules[index]});
  }
  return boxes;
}

void showSafeguards(Form42& form) {
  const Safeguards decided = safeguardsNow(form);
  const bool isLetter = isLetterInForce(form);
  for (const auto& [box, rule] : ruleBoxes(form)) {
    box.value = decided.*rule.safeguard != liftedValue(rule);
    box.isLocked = isSetByPolicy(form, rule);
    box.enabled = !isLetter && !box.isLocked;
  }
  form.SafeguardBoxes[letterBox].value = isLetter;
  form.SafeguardBoxes[letterBox].isLocked = isLetterSetByPolicy(form);
  form.SafeguardBoxes[letterBox].enabled = !form.SafeguardBoxes[letterBox].isLocked;
}

// If the setting could not be stored, the box shows the old one again.
void keep(Form42& form, const RuleBox& pressed) {
  const SafeguardRule& rule = pressed.rule;
  keepSetting(settings::regscan, rule.setting,
              pressed.box.value ? rule.keepingText : rule.liftingText);
  showSafeguards(form);
}

void keepLetter(Form42& form) {
  keepSetting(settings::regscan, letterSetting,
              form.SafeguardBoxes[letterBox].value ? letterText : "0");
  showSafeguards(form);
}

void untickUnsure(Form42& form) {
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    const Evidence* evidence = evidenceOf(form, row);
    if (evidence == nullptr || evidence->confidence < form.leastTicked) {
      form.View2.setChecked(row, false);
    }
  }
}

void keepCareful(Form42& form) {
  keep(form, carefulBox(form));
  form.safeguards.careful = safeguardsNow(form).careful;
  if (form.safeguards.careful) {
    untickUnsure(form);
  }
}

}  // namespace

void bindSafeguardBoxes(Form42& form) {
  for (const RuleBox& each : ruleBoxes(form)) {
    each.box.bind([&form, each] { keep(form, each); });
  }
  // This one does more.
  form.CarefulBox.bind([&form] { keepCareful(form); });
  form.SafeguardBoxes[letterBox].bind([&form] { keepLetter(form); });
}

void openUndoOptions(Form42& form) {
  chameleonButton1_Click(form);
  showSafeguards(form);
}

void openScanOptions(Form42& form) {
  orubutton4_Click(form);
  showSafeguards(form);
}

}  // namespace zelvreg
