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
  std::string folder;                                // below its drive: "Users\\name"
  bool isOld = false;                                // of the time before AppData
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
  std::vector<OfflineProfile> profiles;  // of people, by name
  // The services' own and the one that a new user gets; those outside the folder of the profiles.
  std::vector<OfflineProfile> otherProfiles;
  // One line for each folder or hive that was left out: of the computer, and of both lists.
  std::vector<std::string> unreadable;
  std::vector<std::string> unreadableProfiles;
  std::vector<std::string> unreadableOthers;

  [[nodiscard]] bool empty() const {
    return !software && !system && !defaultUser && profiles.empty();
  }
  [[nodiscard]] std::vector<std::filesystem::path> hives() const;
};

// Throws MachineError if `root` is no folder that can be read.
OfflineFiles findOfflineFiles(const std::filesystem::path& root);

// The profile in a folder below a drive ("Profiles\\name"); none without a hive there. Lines as
// above go to `unreadable`.
std::optional<OfflineProfile> findProfileIn(const std::filesystem::path& drive,
                                            const std::string& folder,
                                            std::vector<std::string>& unreadable);

}  // namespace zelvreg::machine

#endif
