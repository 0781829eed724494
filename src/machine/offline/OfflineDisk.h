// Where the disk of a computer that is not running is mounted, and how it is treated.
#ifndef ZELVREG_MACHINE_OFFLINE_OFFLINE_DISK_H
#define ZELVREG_MACHINE_OFFLINE_OFFLINE_DISK_H

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace zelvreg::machine {

// A mounted Windows disk.
struct OfflineDisk {
  std::filesystem::path root;                    // the drive of its SystemRoot
  std::map<char, std::filesystem::path> drives;  // further drives, by upper-case letter
  std::optional<std::string> user;  // whose current user it is; none: the hive written last
  // All profiles are loaded: also those of services, the one that new users get, and those that
  // ProfileList names on other drives. Else only those of people in the usual folder.
  bool everyProfile = false;
  bool namesLeftOut = false;          // profiles that are left out are named by notices
  bool leavesLogs = false;            // hives that were not shut down cleanly are read as they are
  bool missingDrivesAreDead = false;  // else a file on a drive not given counts as unknown
  bool filesAreReadOnly = false;      // save() leaves the files' attributes alone
  std::size_t keptBackups = 3;        // older backups of a hive beside the newest
};

}  // namespace zelvreg::machine

#endif
