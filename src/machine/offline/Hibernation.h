// Whether the Windows of a disk is hibernated. Fast start-up hibernates it at each shutdown. Its
// newest content is then in the file hiberfil.sys, as is what it knows of the file system: what is
// written to the disk meanwhile is lost when it wakes up, or destroys what is there.
#ifndef ZELVREG_MACHINE_OFFLINE_HIBERNATION_H
#define ZELVREG_MACHINE_OFFLINE_HIBERNATION_H

#include <filesystem>
#include <optional>
#include <string>

#include "machine/offline/OfflineDisk.h"

namespace zelvreg::machine {

// Why nothing on a disk may be written, in one line that names the file and says what to do; none
// if no Windows sleeps on any of its drives. One does if a file hiberfil.sys in the root of a drive
// begins with "HIBR" or "hibr"; one of a Windows that was woken up, or was told not to use it any
// more, begins otherwise. A file that cannot be read is a reason, too, and so are a link and a
// drive whose root cannot be read.
std::optional<std::string> whyAsleep(const OfflineDisk& disk);

}  // namespace zelvreg::machine

#endif
