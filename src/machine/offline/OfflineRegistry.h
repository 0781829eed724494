// The registry of a Windows computer that is not running, from the hive files of its mounted disk.
// Nothing on the disk is written.
#ifndef ZELVREG_MACHINE_OFFLINE_OFFLINE_REGISTRY_H
#define ZELVREG_MACHINE_OFFLINE_OFFLINE_REGISTRY_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "machine/computer/MachineUser.h"
#include "machine/offline/OfflineDisk.h"
#include "machine/registry/Registry.h"

namespace zelvreg::machine {

// All texts are UTF-8.
struct OfflineRegistry {
  std::unique_ptr<Registry> registry;
  int bits = 32;  // 64 where the disk has Windows\SysWOW64
  unsigned codePage = 1252;
  // Whose hive could be read, the current one first: the only one if the disk has none, by the name
  // of "User".
  std::vector<MachineUser> users;
  // One line for each hive left out: its file and why. Those that are nobody's in `users`, and no
  // part of the computer, are in the second list, too.
  std::vector<std::string> damaged;
  std::vector<std::string> damagedProfiles;
  // With every profile: one line for each that is there in name only, or not for long.
  std::vector<std::string> leftOut;
  char systemDrive = 'C';     // the letter that SystemRoot has
  std::string windowsFolder;  // "C:\\Windows", the folder's name as it is on the disk
};

// Logs are taken over unless the disk is to be read without, or Windows is asleep on it. Throws
// MachineError if the disk has no hive at all, or if `disk.user` is not one of its users.
enum class Windows : std::uint8_t { ShutDown, Asleep };
OfflineRegistry readOfflineRegistry(const OfflineDisk& disk, Windows windows = Windows::ShutDown);

}  // namespace zelvreg::machine

#endif
