// Putting the new files of several hives in the places of the old ones: all of them or none,
// whatever happens in between.
#ifndef ZELVREG_MACHINE_OFFLINE_HIVE_SAVING_H
#define ZELVREG_MACHINE_OFFLINE_HIVE_SAVING_H

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "machine/base/AtomicFile.h"

namespace zelvreg::machine {

// The new file of a hive, and what its old one was when it was read.
struct WaitingHive {
  AtomicFile* file;
  FileStamp oldStamp;
};

// Each old hive stays as FILE.bak, and the FILE.bak before it under its time, so many of them. A
// note in the disk's root names the hives as long as some may be new and others old. Throws
// MachineError; all hives are as they were then, unless it says that the next command must put them
// in order.
void putHivesInPlace(const std::filesystem::path& root, const std::vector<WaitingHive>& hives,
                     std::size_t keptBackups);

// One line for each thing that is to be told of a save that was stopped.
struct InterruptedSave {
  std::vector<std::string> notices;     // it was ended or undone
  std::vector<std::string> unfinished;  // it could not be, so that the hives do not belong together
};

// Ends a save that a process was stopped in, if the root holds its note: where some hives are new,
// the others become so, too; where none is, the new files are dropped. Where somebody has written a
// hive since, all stay as they are. Throws MachineError for a note that this program did not write.
InterruptedSave finishSavingHives(const std::filesystem::path& root);

// The same of a disk that must not be written, which stays as it is; `reason` says why.
InterruptedSave unfinishedSave(const std::filesystem::path& root, const std::string& reason);

}  // namespace zelvreg::machine

#endif
