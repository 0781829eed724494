// The computer that the console program works on.
#ifndef ZELVREG_CONSOLE_COMPUTER_H
#define ZELVREG_CONSOLE_COMPUTER_H

#include <memory>
#include <string>
#include <vector>

#include "console/CommandLine.h"

namespace zelvreg::console {

// Whether others may work on the computer at the same time. A folder or a disk is always kept to
// one process, so this is about a running Windows.
enum class Access { Shared, Alone };

// What a command needs: only the lists share the computer, as even a search keeps its counter
// there.
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
  // One line for each change that has no place to be kept in.
  [[nodiscard]] virtual std::vector<std::string> unsaved() const = 0;

  // One line for each thing that opening has put in order after an earlier command was stopped.
  [[nodiscard]] virtual std::vector<std::string> notices() const { return {}; }

  // Keeps what has been changed; throws as open() does. A running Windows keeps all by itself.
  virtual void save() = 0;

  // Whether a change is kept as soon as it is made, so that one made before a break stays made.
  [[nodiscard]] virtual bool keepsAtOnce() const = 0;
};

}  // namespace zelvreg::console

#endif
