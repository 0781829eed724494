#include <algorithm>
#include <filesystem>
#include <optional>

#include "console/Computer.h"
#include "console/Installation.h"
#include "images/MountedImage.h"
#include "machine/Machine.h"
#include "machine/base/MachineError.h"
#include "machine/computer/MachineUser.h"
#include "machine/files/Drives.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

// With a disk that is mounted from an image, it has the image's name in every line.
class EmulatedComputer : public Computer {
 public:
  // `mounted` is null without an image.
  EmulatedComputer(std::unique_ptr<images::MountedImage> mounted,
                   std::unique_ptr<machine::Machine> opened)
      : image(std::move(mounted)), machine(std::move(opened)), running(std::in_place, *machine) {
    machine->drives().lend(machine->drives().programFolder() + u"\\lang", languageFolder());
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
    return named(machine->faultsOf(machine->users().at(placeOf(user)), use()));
  }
  [[nodiscard]] std::vector<std::string> faultsOfComputer() const override {
    return named(machine->faultsOfComputer(use()));
  }
  [[nodiscard]] std::vector<std::string> damage() const override {
    return named(machine->damagedHives());
  }
  [[nodiscard]] std::vector<HiveResult> hives() const override {
    std::vector<HiveResult> results;
    for (const machine::HiveReport& hive : machine->hives()) {
      results.push_back({.file = named(hive.file.string()),
                         .state = hive.state,
                         .entries = hive.entries,
                         .pages = hive.pages,
                         .why = named(hive.why)});
    }
    return results;
  }
  [[nodiscard]] std::vector<std::string> behind() const override {
    return use() == machine::Machine::Use::Reading ? std::vector<std::string>()
                                                   : named(machine->hivesBehind());
  }
  [[nodiscard]] std::vector<std::string> unclean() const override {
    return use() == machine::Machine::Use::Reading ? std::vector<std::string>()
                                                   : named(machine->uncleanHives());
  }
  [[nodiscard]] std::vector<std::string> unsaved() const override {
    return named(machine->unsavedChanges());
  }
  [[nodiscard]] std::vector<std::string> notices() const override {
    return named(machine->notices());
  }
  void save() override {
    try {
      machine->save();
    } catch (const machine::MachineError& error) {
      throw machine::MachineError(named(std::string(error.what())));
    }
    if (image) {
      image->sync();
    }
  }
  void close() override {
    running.reset();
    machine.reset();
    if (image) {
      image->close();
    }
  }
  [[nodiscard]] bool keepsAtOnce() const override { return false; }

 private:
  // An image that was opened for reading is written by nobody.
  [[nodiscard]] machine::Machine::Use use() const {
    return image && !image->canBeWritten() ? machine::Machine::Use::Reading
                                           : machine::Machine::Use::Writing;
  }

  [[nodiscard]] std::size_t placeOf(const ComputerUser& user) const {
    const auto& all = machine->users();
    const auto found = std::ranges::find(all, user.key, &machine::MachineUser::key);
    return static_cast<std::size_t>(found - all.begin());
  }

  [[nodiscard]] std::string named(std::string line) const {
    return image ? image->named(std::move(line)) : line;
  }
  [[nodiscard]] std::vector<std::string> named(std::vector<std::string> lines) const {
    for (std::string& line : lines) {
      line = named(std::move(line));
    }
    return lines;
  }

  std::unique_ptr<images::MountedImage> image;
  std::unique_ptr<machine::Machine> machine;
  std::optional<machine::Running> running;
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
  disk.namesLeftOut = target.everyUser;
  disk.missingDrivesAreDead = target.missingDrivesAreDead;
  disk.filesAreReadOnly = target.filesAreReadOnly;
  disk.keptBackups = target.keptBackups;
  return disk;
}

std::unique_ptr<Computer> openImage(const Target& target) {
  const bool canBeWritten = target.writesInPlace || !target.overlay.empty();
  auto image = std::make_unique<images::MountedImage>(images::ImageTarget{
      .file = target.image,
      .partition = target.partition,
      .canBeWritten = canBeWritten,
      .overlay = target.overlay.empty() ? std::nullopt : std::optional<fs::path>(target.overlay)});
  machine::OfflineDisk disk = diskOf(target);
  disk.root = image->root();
  disk.drives.insert(image->drives().begin(), image->drives().end());
  try {
    auto machine = machine::Machine::openOffline(disk);
    return std::make_unique<EmulatedComputer>(std::move(image), std::move(machine));
  } catch (const machine::MachineError& error) {
    throw machine::MachineError(image->named(error.what()));
  }
}

}  // namespace

std::unique_ptr<Computer> Computer::open(const Target& target, Access /*access*/) {
  if (!target.image.empty()) {
    return openImage(target);
  }
  return std::make_unique<EmulatedComputer>(
      nullptr, target.offlineRoot.empty() ? machine::Machine::open(target.machineFolder)
                                          : machine::Machine::openOffline(diskOf(target)));
}

}  // namespace zelvreg::console
