#include <algorithm>
#include <filesystem>

#include "console/Computer.h"
#include "machine/Machine.h"
#include "machine/computer/MachineUser.h"
#include "machine/files/Drives.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

// The language files that come with this program are beside it.
fs::path ownLanguages() {
  std::error_code error;
  return fs::read_symlink("/proc/self/exe", error).parent_path() / "lang";
}

class EmulatedComputer : public Computer {
 public:
  explicit EmulatedComputer(std::unique_ptr<machine::Machine> opened)
      : machine(std::move(opened)), running(*machine) {
    machine->drives().lend(machine->drives().programFolder() + u"\\lang", ownLanguages());
  }

  [[nodiscard]] std::vector<ComputerUser> users() const override {
    std::vector<ComputerUser> users;
    for (const machine::MachineUser& user : machine->users()) {
      users.push_back({.name = user.name, .sid = user.sid, .key = user.key});
    }
    return users;
  }
  void actAs(const ComputerUser& user, UserWork /*work*/) override {
    machine->actAs(placeOf(user));
  }
  [[nodiscard]] std::vector<std::string> faultsOf(const ComputerUser& user) const override {
    return machine->faultsOf(machine->users().at(placeOf(user)));
  }
  [[nodiscard]] std::vector<std::string> faultsOfComputer() const override {
    return machine->faultsOfComputer();
  }
  [[nodiscard]] std::vector<std::string> damage() const override { return machine->damagedHives(); }
  [[nodiscard]] std::vector<HiveResult> hives() const override {
    std::vector<HiveResult> results;
    for (const machine::HiveReport& hive : machine->hives()) {
      results.push_back({.file = hive.file.string(),
                         .state = hive.state,
                         .entries = hive.entries,
                         .pages = hive.pages,
                         .why = hive.why});
    }
    return results;
  }
  [[nodiscard]] std::vector<std::string> behind() const override { return machine->hivesBehind(); }
  [[nodiscard]] std::vector<std::string> unclean() const override {
    return machine->uncleanHives();
  }
  [[nodiscard]] std::vector<std::string> unsaved() const override {
    return machine->unsavedChanges();
  }
  [[nodiscard]] std::vector<std::string> notices() const override { return machine->notices(); }
  void save() override { machine->save(); }
  [[nodiscard]] bool keepsAtOnce() const override { return false; }

 private:
  [[nodiscard]] std::size_t placeOf(const ComputerUser& user) const {
    const auto& all = machine->users();
    const auto found = std::ranges::find(all, user.key, &machine::MachineUser::key);
    return static_cast<std::size_t>(found - all.begin());
  }

  std::unique_ptr<machine::Machine> machine;
  machine::Running running;
};

machine::OfflineDisk diskOf(const Target& target) {
  machine::OfflineDisk disk;
  disk.root = target.offlineRoot;
  for (const auto& [letter, folder] : target.drives) {
    disk.drives.emplace(letter, folder);
  }
  if (!target.user.empty()) {
    disk.user = target.user;
  }
  disk.leavesLogs = target.leavesLogs;
  disk.everyProfile = target.everyProfile;
  disk.missingDrivesAreDead = target.missingDrivesAreDead;
  disk.filesAreReadOnly = target.filesAreReadOnly;
  disk.keptBackups = target.keptBackups;
  return disk;
}

}  // namespace

std::unique_ptr<Computer> Computer::open(const Target& target, Access /*access*/) {
  return std::make_unique<EmulatedComputer>(target.offlineRoot.empty()
                                                ? machine::Machine::open(target.machineFolder)
                                                : machine::Machine::openOffline(diskOf(target)));
}

}  // namespace zelvreg::console
