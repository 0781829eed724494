#include "console/SafeguardArguments.h"

#include <algorithm>

#include "scan/SafeguardSources.h"

namespace zelvreg::console {
namespace {

constexpr const char* serviceProvider = "service";
constexpr const char* directProvider = "direct";
constexpr const char* safeguardGroup = "Safeguards that can be lifted";

void addProvider(CLI::App& command, const SafeguardRule& rule, Options& options) {
  command
      .add_option_function<std::string>(
          "--provider",
          [&rule, &options](const std::string& name) {
            SafeguardChoice choice = liftingChoice(rule);
            if (name == directProvider) {
              choice.value = !choice.value;
              choice.option = "--provider direct";
            }
            options.safeguardChoices.push_back(choice);
          },
          "who reads the 64-bit view: the program itself, or the management service")
      ->check(CLI::IsMember({serviceProvider, directProvider}))
      ->type_name(std::string(directProvider) + "|" + serviceProvider)
      ->group(safeguardGroup);
}

}  // namespace

void SafeguardArguments::addTo(CLI::App& command, const std::vector<Safeguard>& met,
                               Options& options) {
  for (const SafeguardRule& rule : safeguardRules) {
    if (std::ranges::find(met, rule.safeguard) == met.end()) {
      continue;
    }
    if (rule.safeguard == &Safeguards::asksService) {
      addProvider(command, rule, options);
      continue;
    }
    command
        .add_flag_callback(
            rule.option,
            [&rule, &options] { options.safeguardChoices.push_back(liftingChoice(rule)); },
            rule.effect)
        ->group(safeguardGroup);
  }
  command.add_flag(letterOption, options.isAsDescribed, "lift all of these safeguards")
      ->group(safeguardGroup);
}

void SafeguardArguments::applyTo(Options& options) {
  if (options.isAsDescribed) {
    const auto choices = choicesAsDescribed();
    options.safeguardChoices.insert(options.safeguardChoices.end(), choices.begin(), choices.end());
  }
}

}  // namespace zelvreg::console
