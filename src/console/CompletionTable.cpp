#include "console/CompletionTable.h"

#include <stdexcept>

#include "console/Help.h"

namespace zelvreg::console {
namespace {

Offer requiredOffer(const std::string& placeholder) {
  const std::optional<Offer> offer = offerFor(placeholder);
  if (!offer) {
    throw std::logic_error("nothing is known of the placeholder " + placeholder);
  }
  return *offer;
}

void add(const CLI::App& app, const std::string& path, std::vector<CompletedCommand>& table) {
  CompletedCommand command{.path = path, .commands = {}, .options = {}};
  for (const CLI::Option* option : shownOptions(app)) {
    const std::string placeholder = placeholderOf(*option);
    CompletedOption one{.names = namesOf(*option), .meaning = option->get_description()};
    one.takesValue = !placeholder.empty();
    one.value = one.takesValue ? requiredOffer(placeholder) : Offer{};
    command.options.push_back(one);
  }
  for (const CLI::Option* argument : shownArguments(app)) {
    command.argument = requiredOffer(placeholderOf(*argument));
  }
  const auto below = shownCommands(app);
  for (const CLI::App* one : below) {
    command.commands.push_back({one->get_name(), one->get_description()});
  }
  table.push_back(std::move(command));
  for (const CLI::App* one : below) {
    add(*one, path + " " + one->get_name(), table);
  }
}

}  // namespace

std::vector<CompletedCommand> completionTable(const CLI::App& app) {
  std::vector<CompletedCommand> table;
  add(app, "", table);
  return table;
}

}  // namespace zelvreg::console
