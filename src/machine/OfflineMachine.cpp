// Opening the disk of a computer that is not running.
#include <algorithm>

#include "machine/MachineState.h"
#include "machine/base/AtomicFile.h"
#include "machine/base/MachineError.h"
#include "machine/base/PlainFile.h"
#include "machine/hive/HiveLogs.h"
#include "machine/offline/Hibernation.h"
#include "machine/offline/HiveBackups.h"
#include "machine/offline/HiveSaving.h"
#include "machine/offline/OfflineEnvironment.h"
#include "machine/offline/OfflineFiles.h"
#include "machine/offline/OfflineRegistry.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {

namespace {

// The registry stays where it is as long as the machine lives.
std::function<Environment(const MachineUser&)> environmentsOf(const OfflineRegistry& disk) {
  return [&registry = *disk.registry, windows = disk.windowsFolder,
          is64Bit = disk.bits == 64](const MachineUser& user) {
    Environment environment(is64Bit, utf16(user.name));
    for (const auto& [name, value] : readOfflineEnvironment(registry, windows, user)) {
      environment.set(utf16(name), utf16(value));
    }
    return environment;
  };
}

DriveSettings driveSettings(const OfflineDisk& given, const OfflineRegistry& disk,
                            const Environment& environment) {
  DriveSettings drives;
  drives.folders = given.drives;
  if (!drives.folders.emplace(disk.systemDrive, given.root).second) {
    throw MachineError(std::string("drive ") + disk.systemDrive +
                       ": is the disk with Windows itself; give another letter to the other drive");
  }
  for (const auto& [letter, folder] : drives.folders) {
    if (std::filesystem::is_directory(folder)) continue;
    throw MachineError(folder.string() + ", given as drive " + letter +
                       ":, is not a folder; give the folder where that disk is mounted");
  }
  drives.is64Bit = disk.bits == 64;
  drives.windowsFolder = utf16(disk.windowsFolder);
  drives.programFolder =
      std::u16string(environment.get(u"ProgramFiles").value_or(u"C:\\Program Files")) +
      u"\\zelvreg";
  drives.missingDrivesAreUnknown = !given.missingDrivesAreDead;
  drives.freshness = Freshness::ToTheTick;
  return drives;
}

bool keepsAttributes(const OfflineDisk& disk) {
  return ntfsAttributesOf(disk.root) != 0 ||
         std::ranges::any_of(disk.drives,
                             [](const auto& drive) { return ntfsAttributesOf(drive.second) != 0; });
}

void removeLeftoversOf(const std::filesystem::path& hive) {
  removeLeftovers(hive);
  removeLeftovers(backupOf(hive));
}

// Ends what a stopped process has begun.
InterruptedSave tidyUp(const std::filesystem::path& root) {
  InterruptedSave interrupted = finishSavingHives(root);
  std::ranges::for_each(findOfflineFiles(root).hives(), removeLeftoversOf);
  return interrupted;
}

}  // namespace

std::unique_ptr<Machine> Machine::openOffline(const OfflineDisk& disk) {
  try {
    FolderLock lock(disk.root);
    std::optional<std::string> asleep = whyAsleep(disk);
    InterruptedSave interrupted = asleep ? unfinishedSave(disk.root, *asleep) : tidyUp(disk.root);
    if (asleep) {
      interrupted.notices.push_back(*asleep + "; what is read here may be old");
    }
    OfflineRegistry offline =
        readOfflineRegistry(disk, asleep ? Windows::Asleep : Windows::ShutDown);
    for (const auto& hive : offline.registry->hiveFiles()) {
      if (std::optional<std::string> line = logNotice(*hive)) {
        interrupted.notices.push_back(std::move(*line));
      }
    }
    offline.damaged.insert(offline.damaged.end(), interrupted.unfinished.begin(),
                           interrupted.unfinished.end());
    if (disk.namesLeftOut) {
      std::ranges::move(offline.leftOut, std::back_inserter(interrupted.notices));
    }
    const CodePage& page = sharedCodePage(offline.codePage);
    for (const MachineUser& user : offline.users) {
      // Those on other drives are known only now.
      std::ranges::for_each(asleep ? std::vector<std::filesystem::path>() : user.hives,
                            removeLeftoversOf);
    }
    auto environmentOf = environmentsOf(offline);
    Environment environment = environmentOf(offline.users.front());
    Accounts accounts = accountsFor(offline.users.front());
    Drives drives(driveSettings(disk, offline, environment));
    std::unique_ptr<State> state(new State{
        .lock = std::move(lock),
        .folder = {},
        .form = std::nullopt,
        .is64Bit = offline.bits == 64,
        .hasSuite = false,
        .processes = {},
        .requests = {},
        .page = page,
        .users = std::move(offline.users),
        .environmentOf = std::move(environmentOf),
        .accounts = {{0, std::move(accounts)}},
        .actingUser = 0,
        .environment = std::move(environment),
        .clock = Clock(std::nullopt),
        .registry = std::move(offline.registry),
        .drives = std::move(drives),
        .openFiles = {},
        .faults = {},
        .damagedHives = std::move(offline.damaged),
        .damagedProfiles = std::move(offline.damagedProfiles),
        .notices = std::move(interrupted.notices),
        .unsavedChanges = {},
        .diskAttributes = DiskAttributes(keepsAttributes(disk)),
        .filesAreReadOnly = disk.filesAreReadOnly,
        .diskRoot = disk.root,
        .keptBackups = disk.keptBackups,
        .whyAsleep = std::move(asleep),
    });
    return std::unique_ptr<Machine>(new Machine(std::move(state)));
  } catch (const std::filesystem::filesystem_error& error) {
    throw MachineError(placeOf(error, disk.root) + " cannot be read: " + error.code().message() +
                       "; check that the disk is mounted and that you may read it");
  }
}

}  // namespace zelvreg::machine
