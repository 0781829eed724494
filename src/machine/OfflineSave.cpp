// Writing the hive files of the disk of a computer that is not running.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "machine/MachineState.h"
#include "machine/base/MachineError.h"
#include "machine/hive/HiveCheck.h"
#include "machine/hive/HiveFile.h"
#include "machine/hive/HiveLogs.h"
#include "machine/offline/HiveSaving.h"
#include "machine/offline/PreparedHive.h"

namespace zelvreg::machine {
namespace {

// Drivers of NTFS mount a disk for reading only where they hold it unsafe to write, without a word.
std::optional<std::string> whyReadOnly(const std::filesystem::path& hive) {
  const std::filesystem::path folder = hive.parent_path();
  if (faccessat(AT_FDCWD, folder.c_str(), W_OK, AT_EACCESS) == 0 || errno != EROFS) {
    return std::nullopt;
  }
  return hive.string() +
         ": its disk is mounted for reading only; mount it for writing (a driver may refuse that "
         "until Windows was shut down), or only scan it";
}

void refuseIfUnsafe(const HiveFile& hive) {
  if (const std::optional<std::string> reason = whyReadOnly(hive.path())) {
    throw MachineError(*reason);
  }
  if (const std::optional<std::string> reason = whyUnclean(hive)) {
    throw MachineError(*reason);
  }
  if (!hive.damage().empty()) {
    throw MachineError(hive.damage().front() +
                       " and is not written; nothing on the disk was changed");
  }
  if (const std::optional<std::string> reason = whyUnsound(hive)) {
    throw MachineError(*reason);
  }
  if (!hive.isAsOpened()) {
    throw MachineError(hive.path().string() +
                       ": was written by another program in the meantime; open the disk again");
  }
}

// Those that opening has not shown.
void addOtherFaults(std::vector<std::string>& lines, const HiveFile& hive) {
  for (auto& reason : {whyReadOnly(hive.path()), whyUnsound(hive)}) {
    if (reason) {
      lines.push_back(*reason);
    }
  }
}

bool isOf(const MachineUser& user, const HiveFile& hive) {
  return std::ranges::find(user.hives, hive.path()) != user.hives.end();
}

void addFaults(std::vector<std::string>& lines, const HiveFile& hive, Machine::Use use) {
  lines.insert(lines.end(), hive.damage().begin(), hive.damage().end());
  if (use == Machine::Use::Reading) {
    return;
  }
  if (const std::optional<std::string> reason = whyUnclean(hive)) {
    lines.push_back(*reason);
  }
  addOtherFaults(lines, hive);
}

}  // namespace

std::vector<HiveReport> Machine::hives() const {
  std::vector<HiveReport> reports;
  for (const auto& hive : state->registry->hiveFiles()) {
    const ReplayOutcome& replay = hive->replay();
    const bool isAsleep = replay.state == HiveState::Hibernated && state->whyAsleep;
    reports.push_back({.file = hive->path(),
                       .state = codeOf(replay.state),
                       .entries = replay.entries,
                       .pages = replay.pages,
                       .why = isAsleep ? *state->whyAsleep : whyNotWhole(*hive)});
  }
  return reports;
}

std::vector<std::string> Machine::hivesBehind() const {
  std::vector<std::string> lines;
  if (state->whyAsleep) {
    lines.push_back(*state->whyAsleep);
  }
  state->registry->children(state->registry->machineRoot()).forEach([&](const RegistryKey* key) {
    if (const auto reason = key->hive != nullptr ? whyUnclean(*key->hive) : std::nullopt) {
      lines.push_back(*reason);
    }
  });
  return lines;
}

std::vector<std::string> Machine::uncleanHives() const {
  std::vector<std::string> lines;
  if (state->whyAsleep) {
    lines.push_back(*state->whyAsleep);
  }
  for (const auto& hive : state->registry->hiveFiles()) {
    if (std::optional<std::string> reason = whyUnclean(*hive)) {
      lines.push_back(std::move(*reason));
    }
  }
  for (const auto& hive : state->registry->hiveFiles()) {
    addOtherFaults(lines, *hive);
  }
  return lines;
}

std::vector<std::string> Machine::faultsOf(const MachineUser& user, Use use) const {
  std::vector<std::string> lines = user.damage;
  for (const auto& hive : state->registry->hiveFiles()) {
    if (isOf(user, *hive)) {
      addFaults(lines, *hive, use);
    }
  }
  return lines;
}

std::vector<std::string> Machine::faultsOfComputer(Use use) const {
  std::vector<std::string> lines = state->damagedHives;
  const auto drop = [&lines](const std::vector<std::string>& ofUsers) {
    std::erase_if(lines, [&](const std::string& line) {
      return std::ranges::find(ofUsers, line) != ofUsers.end();
    });
  };
  drop(state->damagedProfiles);
  for (const MachineUser& user : state->users) {
    drop(user.damage);
  }
  if (state->whyAsleep && use == Use::Writing) {
    lines.push_back(*state->whyAsleep);
  }
  for (const auto& hive : state->registry->hiveFiles()) {
    const bool isSomebodys = std::ranges::any_of(
        state->users, [&](const MachineUser& user) { return isOf(user, *hive); });
    if (!isSomebodys) {
      addFaults(lines, *hive, use);
    }
  }
  return lines;
}

void Machine::saveHives() {
  Registry& registry = *state->registry;
  HiveChanges& changes = registry.hiveChanges();
  const std::vector<HivePlan> plans = changes.plans();
  if (state->whyAsleep && (!plans.empty() || state->drives.records().attributesChanged())) {
    throw MachineError(*state->whyAsleep + "; nothing on the disk was changed");
  }
  for (const HivePlan& plan : plans) {
    refuseIfUnsafe(*plan.hive);
  }
  std::vector<std::unique_ptr<PreparedHive>> prepared;
  prepared.reserve(plans.size());
  std::vector<WaitingHive> waiting;
  for (const HivePlan& plan : plans) {
    prepared.push_back(std::make_unique<PreparedHive>(plan));
    if (AtomicFile* file = prepared.back()->file()) {
      waiting.push_back({.file = file, .oldStamp = plan.hive->stamp()});
    }
  }
  std::vector<std::string> homeless = changes.homeless();
  putHivesInPlace(state->diskRoot, waiting, state->keptBackups);
  for (const auto& hive : prepared) {
    hive->wasReplaced();
    changes.forget(hive->hive());
  }
  if (!state->filesAreReadOnly) {
    state->diskAttributes->write();
  }
  state->unsavedChanges = std::move(homeless);
  registry.markSaved();
  state->drives.records().markSaved();
}

}  // namespace zelvreg::machine
