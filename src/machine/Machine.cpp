#include "machine/Machine.h"

#include <sstream>
#include <utility>

#include "machine/MachineState.h"
#include "machine/base/AtomicFile.h"
#include "machine/computer/RecordFiles.h"
#include "machine/hive/HiveFile.h"

namespace zelvreg::machine {

namespace {

Machine* inForce = nullptr;

}  // namespace

Machine::Machine(std::unique_ptr<State> machineState) : state(std::move(machineState)) {}

Machine::~Machine() = default;

void Machine::save() { isOfflineDisk() ? saveHives() : saveFolder(); }

void Machine::saveFolder() {
  Registry& keys = *state->registry;
  FileRecords& records = state->drives.records();
  const bool registryChanged = keys.contentChanged();
  // A deleted key takes its list out of the file with it.
  const bool securityChanged = keys.securityChanged() || records.securityChanged() ||
                               (registryChanged && state->hasSecurityFile);
  if (!registryChanged && !securityChanged && !records.attributesChanged()) return;
  std::vector<AtomicFile> files;
  if (registryChanged) {
    std::ostringstream text;
    writeRegistryFile(text, keys, *state->form);
    files.emplace_back(state->folder / "registry.reg", text.view());
  }
  if (securityChanged) {
    files.emplace_back(state->folder / "security.txt", writeSecurities(keys, state->drives));
  }
  if (records.attributesChanged()) {
    files.emplace_back(state->folder / "attributes.txt", writeAttributes(state->drives));
  }
  // Lists of keys that are gone would not be read any more.
  replaceTogether(files, state->folder / savingNote);
  state->hasSecurityFile = state->hasSecurityFile || securityChanged;
  keys.markSaved();
  records.markSaved();
}

const std::vector<MachineUser>& Machine::users() const { return state->users; }

void Machine::actAs(std::size_t user) {
  const MachineUser& chosen = state->users.at(user);
  state->registry->setCurrentUser(chosen.key);
  state->environment = state->environmentOf(chosen);
  state->accounts.try_emplace(user, accountsFor(chosen));
  state->actingUser = user;
}

Registry& Machine::registry() const { return *state->registry; }
Drives& Machine::drives() const { return state->drives; }
Environment& Machine::environment() const { return state->environment; }
Clock& Machine::clock() const { return state->clock; }
FaultPlan& Machine::faults() const { return state->faults; }
OpenFiles& Machine::openFiles() const { return state->openFiles; }
const Accounts& Machine::accounts() const { return state->accounts.at(state->actingUser); }
const Token& Machine::token() const { return accounts().token(); }
const CodePage& Machine::codePage() const { return state->page; }
bool Machine::is64Bit() const { return state->is64Bit; }
bool Machine::isOfflineDisk() const { return !state->form; }
bool Machine::hasSuite() const { return state->hasSuite; }
Processes& Machine::processes() const { return state->processes; }
Requests& Machine::requests() const { return state->requests; }
std::vector<std::string> Machine::damagedHives() const {
  std::vector<std::string> lines = state->damagedHives;
  for (const auto& hive : state->registry->hiveFiles()) {
    lines.insert(lines.end(), hive->damage().begin(), hive->damage().end());
  }
  return lines;
}
const std::vector<std::string>& Machine::notices() const { return state->notices; }
DiskAttributes* Machine::diskAttributes() const {
  return state->diskAttributes ? &*state->diskAttributes : nullptr;
}
const std::vector<std::string>& Machine::unsavedChanges() const { return state->unsavedChanges; }

Machine* Machine::current() { return inForce; }

Running::Running(Machine& machine) : before(std::exchange(inForce, &machine)) {}

Running::~Running() { inForce = before; }

}  // namespace zelvreg::machine
