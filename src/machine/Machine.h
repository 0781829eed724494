// One emulated Windows computer: opened from a machine folder or from the disk of a computer that
// is not running, put in force to answer the Windows API calls, inspected, and saved.
#ifndef ZELVREG_MACHINE_MACHINE_H
#define ZELVREG_MACHINE_MACHINE_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "machine/base/FaultPlan.h"
#include "machine/offline/OfflineDisk.h"

namespace zelvreg::machine {

class Accounts;
class Clock;
class CodePage;
class DiskAttributes;
class Drives;
class Environment;
struct MachineUser;
class OpenFiles;
struct Processes;
class Registry;
struct Requests;
struct Token;

// What became of the transaction logs of a hive when it was opened.
struct HiveReport {
  std::filesystem::path file;
  const char* state;  // "clean", "replayed", "unreplayable", "as-is" or "hibernated"
  // Of the logs that were taken over: groups of pages, and pages in them.
  std::size_t entries = 0;
  std::size_t pages = 0;
  std::string why;  // it may lack what Windows has written of it; empty if it does not
};

class Machine {
 public:
  // Reads a machine folder. Throws MachineError; nothing has been written then. The folder stays
  // locked against other processes until the machine is gone.
  static std::unique_ptr<Machine> open(const std::filesystem::path& folder);

  // Reads the hive files of a disk. A damaged hive is left out and named in damagedHives().
  static std::unique_ptr<Machine> openOffline(const OfflineDisk& disk);

  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  // Writes back what has changed since opening: registry, access lists, attributes. Each file is
  // written beside the old one and renamed. Throws MachineError; the old files stand then.
  // Of an offline disk the hives with changed keys or values are written, and then the attributes
  // that were set, where the disk keeps them; nothing else. All hives are ready before the first is
  // renamed, all of them are or none, and each old one stays as FILE.bak. A hive that
  // uncleanHives() or damagedHives() names, or that somebody else has written since opening, is
  // refused.
  void save();

  // Who could be the current user, and at first is the first of them. Of a machine folder, the one
  // of its settings and those that HKEY_USERS names; of a disk, those whose hive could be read.
  [[nodiscard]] const std::vector<MachineUser>& users() const;
  // Makes another one of them the current user, with variables and account. No program may run then
  // that has keys of the one before.
  void actAs(std::size_t user);

  [[nodiscard]] Registry& registry() const;
  [[nodiscard]] Drives& drives() const;
  [[nodiscard]] Environment& environment() const;
  [[nodiscard]] Clock& clock() const;
  [[nodiscard]] FaultPlan& faults() const;
  [[nodiscard]] OpenFiles& openFiles() const;
  [[nodiscard]] const Accounts& accounts() const;
  // Of the files of an offline disk; none for a machine folder, which keeps records.
  [[nodiscard]] DiskAttributes* diskAttributes() const;
  // Who the process runs as, and the computer's code page.
  [[nodiscard]] const Token& token() const;
  [[nodiscard]] const CodePage& codePage() const;

  [[nodiscard]] bool is64Bit() const;
  // Whether it comes from a mounted disk, not from a machine folder.
  [[nodiscard]] bool isOfflineDisk() const;
  [[nodiscard]] bool hasSuite() const;
  [[nodiscard]] Processes& processes() const;
  // What calls were asked for that leaves no other trace.
  [[nodiscard]] Requests& requests() const;

  // One line for each hive that was left out, its file and why, and for what was passed over so far
  // in those that could be read. Ask again when more has been read.
  [[nodiscard]] std::vector<std::string> damagedHives() const;

  // What of damagedHives(), and of uncleanHives() if they are to be written, concerns the hives of
  // one of the users, and what the computer's own. What is left out wholly is in neither.
  enum class Use : std::uint8_t { Reading, Writing };
  [[nodiscard]] std::vector<std::string> faultsOf(const MachineUser& user, Use use) const;
  [[nodiscard]] std::vector<std::string> faultsOfComputer(Use use) const;

  // One line for each thing that is to be told of opening: what was ended or put in order because
  // an earlier process was stopped in the middle of it, and what became of the logs of a hive that
  // was not shut down cleanly.
  [[nodiscard]] const std::vector<std::string>& notices() const;

  // One for each hive of an offline disk that is read.
  [[nodiscard]] std::vector<HiveReport> hives() const;
  // One line for each reason why the computer's own hives must not be written that opening has
  // shown: Windows has newer content of them than was read. It names the file and says what to do.
  [[nodiscard]] std::vector<std::string> hivesBehind() const;
  // One line for each hive of an offline disk that must not be written, for this or any other
  // reason. Reads the disk; ask before work is done that save() would refuse.
  [[nodiscard]] std::vector<std::string> uncleanHives() const;

  // One line for each place of which the last save() has dropped changes, since the disk has no
  // hive that could hold them.
  [[nodiscard]] const std::vector<std::string>& unsavedChanges() const;

  // The machine in force, or none.
  static Machine* current();

 private:
  friend class Running;
  struct State;
  explicit Machine(std::unique_ptr<State> state);
  void saveFolder();
  void saveHives();
  std::unique_ptr<State> state;
};

// Puts a machine in force for as long as it lives; then the one before is in force again.
class Running {
 public:
  explicit Running(Machine& machine);
  ~Running();
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  Machine* before;
};

}  // namespace zelvreg::machine

#endif
