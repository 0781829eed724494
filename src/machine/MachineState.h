// What a machine consists of, for the files that make one.
#ifndef ZELVREG_MACHINE_MACHINE_STATE_H
#define ZELVREG_MACHINE_MACHINE_STATE_H

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "machine/Machine.h"
#include "machine/base/CodePage.h"
#include "machine/base/FaultPlan.h"
#include "machine/computer/Clock.h"
#include "machine/computer/Environment.h"
#include "machine/computer/FolderLock.h"
#include "machine/computer/MachineUser.h"
#include "machine/computer/Processes.h"
#include "machine/computer/Requests.h"
#include "machine/files/DiskAttributes.h"
#include "machine/files/Drives.h"
#include "machine/files/OpenFiles.h"
#include "machine/regfile/RegistryFile.h"
#include "machine/registry/Registry.h"
#include "machine/security/Accounts.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {

// Is in a machine folder while its files are replaced.
inline constexpr const char* savingNote = "saving.txt";

// What a process of this user knows.
inline Accounts accountsFor(const MachineUser& user) {
  return {utf16(user.name), sidFromText(user.sid).value_or(folderUserSid())};
}

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
  // The current one first, as long as nobody else was chosen.
  std::vector<MachineUser> users;
  // The variables of a process that a user runs.
  std::function<Environment(const MachineUser& user)> environmentOf;
  // By the place in `users` of each who has run it so far. What a token may do is kept by where it
  // is.
  std::map<std::size_t, Accounts> accounts;
  std::size_t actingUser = 0;
  Environment environment;
  Clock clock;
  std::unique_ptr<Registry> registry;
  Drives drives;
  OpenFiles openFiles;
  FaultPlan faults;
  // The second are those of nobody in `users`, who are left out wholly.
  std::vector<std::string> damagedHives;
  std::vector<std::string> damagedProfiles;
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
