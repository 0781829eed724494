// Where the hive files lie on a mounted Windows disk. Names are found without regard to case; a
// symbolic link to a folder is followed only as long as it stays on the disk, one to a hive never.
#ifndef ZELVREG_MACHINE_OFFLINE_OFFLINE_FILES_H
#define ZELVREG_MACHINE_OFFLINE_OFFLINE_FILES_H

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::machine {

// A user's profile folder that has an NTUSER.DAT.
struct OfflineProfile {
  std::string name;                                  // the folder's, UTF-8
  std::filesystem::path hive;                        // NTUSER.DAT
  std::optional<std::filesystem::path> classesHive;  // UsrClass.dat
  std::filesystem::file_time_type lastWrite;         // of NTUSER.DAT
};

struct OfflineFiles {
  std::string windowsFolder;  // its name on the disk; "Windows" if there is none
  bool is64Bit = false;       // SysWOW64 is there
  std::optional<std::filesystem::path> software;
  std::optional<std::filesystem::path> system;
  std::optional<std::filesystem::path> defaultUser;
  std::string profilesFolder;   // "Users" or "Documents and Settings", as it is on the disk
  bool hasOldProfiles = false;  // the latter
  std::vector<OfflineProfile> profiles;  // by name
  std::vector<std::string> unreadable;   // one line for each folder or hive that was left out

  [[nodiscard]] bool empty() const {
    return !software && !system && !defaultUser && profiles.empty();
  }
  [[nodiscard]] std::vector<std::filesystem::path> hives() const;
};

// Throws MachineError if `root` is no folder that can be read.
OfflineFiles findOfflineFiles(const std::filesystem::path& root);

}  // namespace zelvreg::machine

#endif
