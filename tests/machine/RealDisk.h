// Disks of real computers. They are not part of the project: tests of them run only where the
// environment variable ZELVREG_REAL_HIVES names the folder that holds them. Each test works on a
// copy, since a disk belongs to one process at a time and several run tests.
#ifndef ZELVREG_TESTS_MACHINE_REAL_DISK_H
#define ZELVREG_TESTS_MACHINE_REAL_DISK_H

#include <cstdlib>
#include <filesystem>

namespace zelvreg::fixture {

inline bool hasRealDisks() { return std::getenv("ZELVREG_REAL_HIVES") != nullptr; }

// Copies the disk of this name into a folder, so that it can be written there.
inline void copyRealDisk(const std::filesystem::path& name, const std::filesystem::path& folder) {
  namespace fs = std::filesystem;
  fs::copy(fs::path(std::getenv("ZELVREG_REAL_HIVES")) / name, folder, fs::copy_options::recursive);
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add);
  }
}

}  // namespace zelvreg::fixture

#endif
