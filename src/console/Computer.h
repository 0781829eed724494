// The computer that the console program works on.
#ifndef ZELVREG_CONSOLE_COMPUTER_H
#define ZELVREG_CONSOLE_COMPUTER_H

#include <memory>
#include <string>
#include <vector>

#include "console/CommandLine.h"

namespace zelvreg::console {

// Whether other processes may work on the computer at the same time. On a folder or a disk they
// never may, so this matters only on a running Windows.
enum class Access { Shared, Alone };

// What a command needs. Only the lists share the computer: even a search writes its counter.
Access accessFor(Command command);

// While it lives, the calls of the Windows API are answered by this computer.
class Computer {
 public:
  // Throws std::runtime_error with one line that says what is wrong and what to do.
  static std::unique_ptr<Computer> open(const Target& target, Access access = Access::Alone);
  virtual ~Computer() = default;

  // One line for each part of the registry that was left out because it is damaged.
  [[nodiscard]] virtual std::vector<std::string> damage() const = 0;

  // One line for each part of the registry that must not be written, because its last owner did not
  // close it properly.
  [[nodiscard]] virtual std::vector<std::string> unclean() const = 0;
  // One line for each change that cannot be saved, because the disk has no hive for it.
  [[nodiscard]] virtual std::vector<std::string> unsaved() const = 0;

  // One line for each thing that was repaired on opening because an earlier command was stopped.
  [[nodiscard]] virtual std::vector<std::string> notices() const { return {}; }

  // Saves what has been changed; throws as open() does. A running Windows needs no saving.
  virtual void save() = 0;

  // Whether each change is saved at once, so that it stays if the command is stopped.
  [[nodiscard]] virtual bool keepsAtOnce() const = 0;
};

}  // namespace zelvreg::console

#endif
