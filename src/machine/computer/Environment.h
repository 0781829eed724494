// The environment variables of the emulated computer.
#ifndef ZELVREG_MACHINE_COMPUTER_ENVIRONMENT_H
#define ZELVREG_MACHINE_COMPUTER_ENVIRONMENT_H

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace zelvreg::machine {

// Names are compared without regard to case. Values are not expanded when they are set.
class Environment {
 public:
  // No variable at all.
  Environment() = default;
  // The variables that a 32-bit process of this user has; `is64Bit` is the computer's.
  Environment(bool is64Bit, std::u16string_view user);

  void set(std::u16string_view name, std::u16string_view value);
  // The value lasts until the variable is set again.
  [[nodiscard]] std::optional<std::u16string_view> get(std::u16string_view name) const;

  // Puts the value in place of every %name%; the name of no variable stays as it is written.
  [[nodiscard]] std::u16string expand(std::u16string_view text) const;

 private:
  struct NameOrder {
    using is_transparent = void;
    bool operator()(std::u16string_view first, std::u16string_view second) const;
  };
  std::map<std::u16string, std::u16string, NameOrder> valueOf;
};

}  // namespace zelvreg::machine

#endif
