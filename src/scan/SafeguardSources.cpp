#include "scan/SafeguardSources.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "form/Form42.h"
#include "keys/OpenKey.h"
#include "scan/Settings.h"
#include "text/Numbers.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// A policy may be a text or a number. std::nullopt without one, and on an offline disk.
std::optional<std::string> policyText(const Form42& form, const char* name) {
  if (!form.obeysComputer) {
    return std::nullopt;
  }
  const OpenKey key(HiveHandle::LocalMachine, policyKey, KEY_QUERY_VALUE | KEY_WOW64_64KEY);
  std::array<char16_t, 64> data{};
  DWORD size = sizeof data;
  DWORD type = REG_NONE;
  if (!key.isOpen() ||
      RegQueryValueExW(key.handle(), Wide(name).get(), nullptr, &type,
                       reinterpret_cast<BYTE*>(data.data()), &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  if (type == REG_DWORD) {
    DWORD number = 0;
    std::memcpy(&number, data.data(), sizeof(number));
    return decimal(number);
  }
  return utf8(untilNul(std::u16string_view(data.data(), size / sizeof(char16_t))));
}

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

void decideSafeguards(Form42& form) { form.safeguards = safeguardsNow(form); }

std::string contradictionOf(const Form42& form) {
  for (const SafeguardChoice& choice : form.safeguardChoices) {
    if (isForbidden(form, choice)) {
      return std::string(choice.option) + " contradicts a policy of this computer (HKLM\\" +
             policyKey + "); leave out the option, or change the policy";
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
