// The old contents of a hive that stay beside it: FILE.bak is the one before the last save, and
// FILE.bak-2026-01-31T13-45-06 an older one, named by the time of its last write (UTC).
#ifndef ZELVREG_MACHINE_OFFLINE_HIVE_BACKUPS_H
#define ZELVREG_MACHINE_OFFLINE_HIVE_BACKUPS_H

#include <cstddef>
#include <filesystem>

#include "machine/base/PlainFile.h"

namespace zelvreg::machine {

std::filesystem::path backupOf(const std::filesystem::path& hive);

// FILE.bak becomes an older one, so that a new one can take its name. Gives the name that it has
// then; the empty path if there is none to keep: FILE.bak is not there, is no plain file, or is but
// a second name of the hive, whose stamp this is. Throws MachineError.
std::filesystem::path setBackupAside(const std::filesystem::path& hive, const FileStamp& stamp);

// Leaves so many older ones: the oldest, which has what was there before the first repair, and the
// newest of the others. What cannot be removed stays.
void thinBackups(const std::filesystem::path& hive, std::size_t kept);

}  // namespace zelvreg::machine

#endif
