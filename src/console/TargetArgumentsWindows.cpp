#include "console/TargetArguments.h"

namespace zelvreg::console {

const char* TargetArguments::program() { return "zelvreg-console"; }

const char* TargetArguments::usage() { return ""; }

std::string TargetArguments::callOf(const std::string& command) {
  return program() + (" " + command);
}

const char* TargetArguments::advice() { return ""; }

const char* TargetArguments::manual() {
  return "More\n  zelvreg-console COMMAND --help tells the options of a command.\n";
}

void TargetArguments::addTo(CLI::App& app, Target& target) {
  app.add_option("--user", target.user, "scan or repair the keys of every user, signed in or not")
      ->check(CLI::IsMember({everybody}))
      ->type_name(everybody)
      ->group("Which users");
}

void TargetArguments::applyTo(Target& target) const {
  target.everyUser = !target.user.empty();
  target.user.clear();
}

void TargetArguments::applyToImages(Target& /*target*/) const {}

void TargetArguments::decideWriting(Options& /*options*/) {}

}  // namespace zelvreg::console
