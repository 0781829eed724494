#include "scan/SafeguardSources.h"

#include <algorithm>
#include <optional>

#include "form/Form42.h"
#include "keys/OpenPair.h"
#include "scan/Policies.h"
#include "scan/Settings.h"

namespace zelvreg {
namespace {

std::string settingText(const Form42& form, const char* name) {
  return form.obeysComputer ? readSetting(settings::regscan, name) : std::string();
}

// A policy for one safeguard wins over the policy for all.
std::optional<bool> valueByPolicy(const Form42& form, const SafeguardRule& rule) {
  if (const auto text = policyText(form, rule.setting)) {
    return *text == rule.liftingText ? liftedValue(rule) : !liftedValue(rule);
  }
  if (policyText(form, letterSetting) == letterText) {
    return liftedValue(rule);
  }
  return std::nullopt;
}

bool valueBySettings(const Form42& form, const SafeguardRule& rule) {
  const bool isLifted =
      isLetterInForce(form) || settingText(form, rule.setting) == rule.liftingText;
  return isLifted ? liftedValue(rule) : !liftedValue(rule);
}

bool valueOf(const Form42& form, const SafeguardRule& rule) {
  if (const auto value = valueByPolicy(form, rule)) {
    return *value;
  }
  const auto chosen =
      std::ranges::find(form.safeguardChoices, rule.safeguard, &SafeguardChoice::safeguard);
  return chosen != form.safeguardChoices.end() ? chosen->value : valueBySettings(form, rule);
}

bool isForbidden(const Form42& form, const SafeguardChoice& choice) {
  const auto value = valueByPolicy(form, safeguardRule(choice.safeguard));
  const bool wantsLetter = std::string_view(choice.option) == letterOption;
  return (value && *value != choice.value) ||
         (wantsLetter && policyText(form, letterSetting).value_or(letterText) != letterText);
}

}  // namespace

const SafeguardRule& safeguardRule(bool Safeguards::*safeguard) {
  return *std::ranges::find(safeguardRules, safeguard, &SafeguardRule::safeguard);
}

SafeguardChoice liftingChoice(const SafeguardRule& rule) {
  return {.safeguard = rule.safeguard, .value = liftedValue(rule), .option = rule.option};
}

std::vector<SafeguardChoice> choicesAsDescribed() {
  std::vector<SafeguardChoice> choices;
  choices.reserve(safeguardRules.size());
  for (const SafeguardRule& rule : safeguardRules) {
    choices.push_back(
        {.safeguard = rule.safeguard, .value = liftedValue(rule), .option = letterOption});
  }
  return choices;
}

Safeguards safeguardsNow(const Form42& form) {
  Safeguards decided;
  for (const SafeguardRule& rule : safeguardRules) {
    decided.*rule.safeguard = valueOf(form, rule);
  }
  return decided;
}

void decideSafeguards(Form42& form) {
  form.safeguards = safeguardsNow(form);
  leaveKeysOpen(form.safeguards == asDescribed());
}

std::string contradictionOf(const Form42& form) {
  for (const SafeguardChoice& choice : form.safeguardChoices) {
    if (isForbidden(form, choice)) {
      return policyRefusal(choice.option, "leave out the option");
    }
  }
  return {};
}

bool isSetByPolicy(const Form42& form, const SafeguardRule& rule) {
  return valueByPolicy(form, rule).has_value();
}

bool isKeptByPolicy(const Form42& form, bool Safeguards::*safeguard) {
  const SafeguardRule& rule = safeguardRule(safeguard);
  return valueByPolicy(form, rule) == !liftedValue(rule);
}

bool isLetterSetByPolicy(const Form42& form) { return policyText(form, letterSetting).has_value(); }

bool isLetterInForce(const Form42& form) {
  const auto policy = policyText(form, letterSetting);
  return policy.value_or(settingText(form, letterSetting)) == letterText;
}

}  // namespace zelvreg
