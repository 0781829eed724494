// A view of the mounted disks that is this process's own.
#ifndef ZELVREG_IMAGES_OWN_MOUNTS_H
#define ZELVREG_IMAGES_OWN_MOUNTS_H

#include <filesystem>

namespace zelvreg::images {

// What this process and those that it starts mount from now on, nobody else sees, and it is gone
// with the last of them. Without the rights of an administrator the process gets them for its own
// mounts, where the kernel allows that; it must have one thread alone then. Gives a folder in
// memory that is empty at first, and that nobody else sees either. Can be called again. Throws
// MachineError.
std::filesystem::path ownMountFolder();

// Whether the rights come from a user namespace, in which nobody has other groups.
bool hasOwnUsers();

}  // namespace zelvreg::images

#endif
