// A computer that is in force already, for commands to work on.
#ifndef ZELVREG_TESTS_CONSOLE_GIVEN_COMPUTER_H
#define ZELVREG_TESTS_CONSOLE_GIVEN_COMPUTER_H

#include <string>
#include <vector>

#include "console/Computer.h"

namespace zelvreg::console {

class GivenComputer : public Computer {
 public:
  [[nodiscard]] std::vector<ComputerUser> users() const override { return {}; }
  void actAs(const ComputerUser& /*user*/, UserWork /*work*/) override {}
  [[nodiscard]] std::vector<std::string> faultsOf(const ComputerUser& /*user*/) const override {
    return {};
  }
  [[nodiscard]] std::vector<std::string> faultsOfComputer() const override { return {}; }
  [[nodiscard]] std::vector<std::string> damage() const override { return damaged; }
  [[nodiscard]] std::vector<std::string> unclean() const override { return notClosed; }
  [[nodiscard]] std::vector<std::string> unsaved() const override { return homeless; }
  void save() override { ++saves; }
  [[nodiscard]] bool keepsAtOnce() const override { return isLive; }

  std::vector<std::string> damaged;
  std::vector<std::string> notClosed;
  std::vector<std::string> homeless;
  bool isLive = false;
  int saves = 0;
};

}  // namespace zelvreg::console

#endif
