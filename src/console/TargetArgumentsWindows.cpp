#include "console/TargetArguments.h"

namespace zelvreg::console {

void TargetArguments::addTo(CLI::App& app, Target& target) {
  app.add_option("--user", target.user,
                 "\"all\": scan or repair the keys of every user, signed in or not")
      ->check(CLI::IsMember({everybody}));
}

void TargetArguments::applyTo(Target& target) const {
  target.everyUser = !target.user.empty();
  target.user.clear();
}

void TargetArguments::decideWriting(Options& /*options*/) {}

}  // namespace zelvreg::console
