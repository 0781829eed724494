#include "console/Computer.h"

namespace zelvreg::console {
namespace {

class RunningComputer : public Computer {
 public:
  [[nodiscard]] std::vector<std::string> damage() const override { return {}; }
  [[nodiscard]] std::vector<std::string> unclean() const override { return {}; }
  [[nodiscard]] std::vector<std::string> unsaved() const override { return {}; }
  void save() override {}
};

}  // namespace

std::unique_ptr<Computer> Computer::open(const Target& /*target*/) {
  return std::make_unique<RunningComputer>();
}

}  // namespace zelvreg::console
