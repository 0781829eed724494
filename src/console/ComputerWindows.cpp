#include <optional>
#include <stdexcept>

#include "console/Computer.h"
#include "runtime/SingleInstance.h"

namespace zelvreg::console {
namespace {

class RunningComputer : public Computer {
 public:
  explicit RunningComputer(Access access) {
    if (access == Access::Alone && !instance.emplace().isFirst()) {
      throw std::runtime_error(
          "another copy of the program is working on this computer's registry, perhaps another "
          "user's; "
          "close its window or wait until it ends");
    }
  }
  // The current user stays the one who runs the program.
  [[nodiscard]] std::vector<ComputerUser> users() const override { return {}; }
  void actAs(const ComputerUser& /*user*/, UserWork /*work*/) override {}
  [[nodiscard]] std::vector<std::string> faultsOf(const ComputerUser& /*user*/) const override {
    return {};
  }
  [[nodiscard]] std::vector<std::string> faultsOfComputer() const override { return {}; }
  [[nodiscard]] std::vector<std::string> damage() const override { return {}; }
  [[nodiscard]] std::vector<std::string> unclean() const override { return {}; }
  [[nodiscard]] std::vector<std::string> unsaved() const override { return {}; }
  void save() override {}
  [[nodiscard]] bool keepsAtOnce() const override { return true; }

 private:
  std::optional<SingleInstance> instance;
};

}  // namespace

std::unique_ptr<Computer> Computer::open(const Target& /*target*/, Access access) {
  return std::make_unique<RunningComputer>(access);
}

}  // namespace zelvreg::console
