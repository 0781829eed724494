// Writing the hive files of the disk of a computer that is not running.
#include "machine/HiveFile.h"
#include "machine/HiveLogs.h"
#include "machine/MachineState.h"
#include "machine/PreparedHive.h"

namespace zelvreg::machine {
namespace {

void refuseIfUnsafe(const HiveFile& hive) {
  if (const std::optional<std::string> reason = whyUnclean(hive.path())) {
    throw MachineError(*reason);
  }
  if (!hive.isAsOpened()) {
    throw MachineError(hive.path().string() +
                       ": was written by another program in the meantime; open the disk again");
  }
}

}  // namespace

std::vector<std::string> Machine::uncleanHives() const {
  std::vector<std::string> lines;
  for (const auto& hive : state->registry->hiveFiles()) {
    if (std::optional<std::string> reason = whyUnclean(hive->path())) {
      lines.push_back(std::move(*reason));
    }
  }
  return lines;
}

void Machine::saveHives() {
  Registry& registry = *state->registry;
  HiveChanges& changes = registry.hiveChanges();
  const std::vector<HivePlan> plans = changes.plans();
  for (const HivePlan& plan : plans) {
    refuseIfUnsafe(*plan.hive);
  }
  std::vector<std::unique_ptr<PreparedHive>> prepared;
  prepared.reserve(plans.size());
  for (const HivePlan& plan : plans) {
    prepared.push_back(std::make_unique<PreparedHive>(plan));
  }
  std::vector<std::string> homeless = changes.homeless();
  for (const auto& hive : prepared) {
    // What stands on the disk must not be done a second time if a later hive fails.
    hive->replace();
    changes.forget(hive->hive());
  }
  if (state->diskAttributes) {
    state->diskAttributes->write();
  }
  state->unsavedChanges = std::move(homeless);
  registry.markSaved();
  state->drives.records().markSaved();
}

}  // namespace zelvreg::machine
