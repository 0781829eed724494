// A computer on which the console program finds the same few dead startup programs each time.
#ifndef ZELVREG_TESTS_SOAK_SOAK_COMPUTER_H
#define ZELVREG_TESTS_SOAK_SOAK_COMPUTER_H

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace zelvreg::fixture {

class SoakComputer {
 public:
  static std::unique_ptr<SoakComputer> make();
  virtual ~SoakComputer() = default;

  // What names it on a command line.
  [[nodiscard]] virtual std::vector<std::string> target() const = 0;
  // The folder of this system in which repairs leave their safety exports.
  [[nodiscard]] virtual std::filesystem::path exports() const = 0;
};

}  // namespace zelvreg::fixture

#endif
