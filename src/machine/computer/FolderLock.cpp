#include "machine/computer/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <cstring>

#include "machine/base/MachineError.h"

namespace zelvreg::machine {

FolderLock::FolderLock(const std::filesystem::path& folder)
    : open(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (!open.isOpen()) {
    const bool absent = errno == ENOENT || errno == ENOTDIR;
    throw MachineError(absent ? folder.string() + " is not a folder; give one that is there"
                              : folder.string() + " cannot be opened: " + std::strerror(errno) +
                                    "; give yourself the right to read it");
  }
  if (flock(open.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    throw MachineError(folder.string() + " is in use by another process; wait until it has ended");
  }
}

}  // namespace zelvreg::machine
