#include "console/TargetArguments.h"

namespace zelvreg::console {

void TargetArguments::addTo(CLI::App& /*app*/, Target& /*target*/) {}

void TargetArguments::applyTo(Target& /*target*/) const {}

void TargetArguments::decideWriting(Options& /*options*/) {}

}  // namespace zelvreg::console
