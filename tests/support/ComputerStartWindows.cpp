#include <cstdlib>
#include <stdexcept>

#include "support/ComputerFixture.h"

namespace zelvreg::fixture {

std::unique_ptr<RunningComputer> RunningComputer::start(int /*bits*/) {
  // The tests delete and write where a real computer keeps its own.
  if (std::getenv("ZELVREG_THROW_AWAY_PREFIX") == nullptr) {
    throw std::runtime_error("these tests change the registry; run them with ./test");
  }
  return std::make_unique<RunningComputer>();
}

}  // namespace zelvreg::fixture
