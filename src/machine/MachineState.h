// What a machine consists of, for the files that make one.
#ifndef ZELVREG_MACHINE_MACHINE_STATE_H
#define ZELVREG_MACHINE_MACHINE_STATE_H

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "machine/Machine.h"
#include "machine/base/CodePage.h"
#include "machine/base/FaultPlan.h"
#include "machine/computer/Clock.h"
#include "machine/computer/Environment.h"
#include "machine/computer/FolderLock.h"
#include "machine/computer/Processes.h"
#include "machine/computer/Requests.h"
#include "machine/files/DiskAttributes.h"
#include "machine/files/Drives.h"
#include "machine/files/OpenFiles.h"
#include "machine/regfile/RegistryFile.h"
#include "machine/registry/Registry.h"
#include "machine/security/Accounts.h"

namespace zelvreg::machine {

// Is in a machine folder while its files are replaced.
inline constexpr const char* savingNote = "saving.txt";

struct Machine::State {
  FolderLock lock;
  // A machine folder and the form of its registry; an offline disk has neither.
  std::filesystem::path folder;
  std::optional<RegistryFileForm> form;
  bool hasSecurityFile = false;

  bool is64Bit;
  bool hasSuite = false;
  Processes processes;
  Requests requests;
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
  // Of an offline disk, and whether they may be changed there.
  std::optional<DiskAttributes> diskAttributes;
  bool filesAreReadOnly = false;
  // Of an offline disk: its folder, and how many older backups of a hive stay.
  std::filesystem::path diskRoot;
  std::size_t keptBackups = 0;
  // Of an offline disk whose Windows is hibernated: why nothing on it may be written.
  std::optional<std::string> whyAsleep = std::nullopt;
};

}  // namespace zelvreg::machine

#endif
