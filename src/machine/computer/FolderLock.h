// Keeps a folder to one process at a time.
#ifndef ZELVREG_MACHINE_COMPUTER_FOLDER_LOCK_H
#define ZELVREG_MACHINE_COMPUTER_FOLDER_LOCK_H

#include <filesystem>

#include "machine/base/FileDescriptor.h"

namespace zelvreg::machine {

// Nothing is written into the folder, so it may lie on a disk that is read-only. On a file system
// that knows no locks there is none.
class FolderLock {
 public:
  // Throws MachineError if it is no folder, may not be read, or another process holds it.
  explicit FolderLock(const std::filesystem::path& folder);

 private:
  FileDescriptor open;
};

}  // namespace zelvreg::machine

#endif
