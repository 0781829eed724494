// What a machine consists of, for the files that make one.
#ifndef ZELVREG_MACHINE_MACHINE_STATE_H
#define ZELVREG_MACHINE_MACHINE_STATE_H

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "machine/Accounts.h"
#include "machine/Clock.h"
#include "machine/CodePage.h"
#include "machine/DiskAttributes.h"
#include "machine/Drives.h"
#include "machine/Environment.h"
#include "machine/FaultPlan.h"
#include "machine/FolderLock.h"
#include "machine/Machine.h"
#include "machine/OpenFiles.h"
#include "machine/Processes.h"
#include "machine/Registry.h"
#include "machine/RegistryFile.h"

namespace zelvreg::machine {

// Stands in a machine folder while its files are replaced.
inline constexpr const char* savingNote = "saving.txt";

struct Machine::State {
  FolderLock lock;
  // A machine folder and the form of its registry; an offline disk has neither.
  std::filesystem::path folder;
  std::optional<RegistryFileForm> form;
  bool hasSecurityFile = false;

  bool is64Bit;
  bool hasSuite = false;
  std::vector<std::string> suiteTexts;
  Processes processes;
  const CodePage& page;
  Accounts accounts;
  Environment environment;
  Clock clock;
  std::unique_ptr<Registry> registry;
  Drives drives;
  OpenFiles openFiles;
  FaultPlan faults;
  std::vector<std::string> damagedHives;
  std::vector<std::string> notices;
  std::vector<std::string> unsavedChanges;
  // Of an offline disk, unless its files are not to be changed.
  std::optional<DiskAttributes> diskAttributes;
  // Of an offline disk: its folder, and how many older backups of a hive stay.
  std::filesystem::path diskRoot;
  std::size_t keptBackups = 0;
};

}  // namespace zelvreg::machine

#endif
