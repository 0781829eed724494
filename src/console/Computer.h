// The computer that the console program works on.
#ifndef ZELVREG_CONSOLE_COMPUTER_H
#define ZELVREG_CONSOLE_COMPUTER_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "console/CommandLine.h"
#include "console/ComputerUser.h"

namespace zelvreg::console {

// Whether other processes may work on the computer at the same time. On a folder or a disk they
// never may, so this matters only on a running Windows.
enum class Access { Shared, Alone };

// What a command needs. Only the lists share the computer: even a search writes its counter.
Access accessFor(Command command);

// What became of the transaction logs of a hive file when it was opened.
struct HiveResult {
  std::string file;
  std::string state;  // "clean", "replayed", "unreplayable", "as-is" or "hibernated"
  // Of the logs that were taken over: groups of pages, and pages in them.
  std::size_t entries = 0;
  std::size_t pages = 0;
  std::string why;  // it may lack what Windows has written of it; empty if it does not
};

// What is done as a user: a scan, which changes nothing of the user's, or anything that may.
enum class UserWork { Scan, Repair };

// While it lives, the calls of the Windows API are answered by this computer.
class Computer {
 public:
  // Throws std::runtime_error with one line that says what is wrong and what to do.
  static std::unique_ptr<Computer> open(const Target& target, Access access = Access::Alone);
  virtual ~Computer() = default;

  // Whose keys can be HKEY_CURRENT_USER: at first that of the first of them.
  [[nodiscard]] virtual std::vector<ComputerUser> users() const = 0;
  // From now on it is this user's, with the user's variables, until the next call of both. Throws
  // std::runtime_error with one line if the user's keys cannot be had; nothing is changed then.
  virtual void actAs(const ComputerUser& user, UserWork work) = 0;
  // Lets go of what acting as another user has taken hold of.
  virtual void endActing() {}
  // What of damage() and unclean() concerns this user's keys alone, or what is the computer's.
  [[nodiscard]] virtual std::vector<std::string> faultsOf(const ComputerUser& user) const = 0;
  [[nodiscard]] virtual std::vector<std::string> faultsOfComputer() const = 0;

  // One line for each part of the registry that was left out because it is damaged.
  [[nodiscard]] virtual std::vector<std::string> damage() const = 0;

  // The hive files that are read; none on a running Windows, and of a folder that has none.
  [[nodiscard]] virtual std::vector<HiveResult> hives() const { return {}; }

  // One line for each reason why nothing of the computer's own may be written that opening has
  // shown: Windows has newer content of a hive than was read.
  [[nodiscard]] virtual std::vector<std::string> behind() const { return {}; }
  // One line for each part of the registry that must not be written, for this or any other reason.
  // Takes longer.
  [[nodiscard]] virtual std::vector<std::string> unclean() const = 0;
  // One line for each change that cannot be saved, because the disk has no hive for it.
  [[nodiscard]] virtual std::vector<std::string> unsaved() const = 0;

  // One line for each thing that is to be told of opening it.
  [[nodiscard]] virtual std::vector<std::string> notices() const { return {}; }

  // Saves what has been changed; throws as open() does. A running Windows needs no saving.
  virtual void save() = 0;

  // Ends all work on it; nothing is asked of it afterwards. Throws as open() does if what was saved
  // could not be written out. Without it that is not told.
  virtual void close() {}

  // Whether each change is saved at once, so that it stays if the command is stopped.
  [[nodiscard]] virtual bool keepsAtOnce() const = 0;
};

}  // namespace zelvreg::console

#endif
