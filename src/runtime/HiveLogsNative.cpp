#include "runtime/HiveLogs.h"

#include "machine/Machine.h"
#include "machine/hive/HiveFile.h"
#include "machine/hive/HiveLogs.h"
#include "machine/registry/Registry.h"

namespace zelvreg {

bool isBehindItsLogs(const std::string& key) {
  const auto* machine = machine::Machine::current();
  const auto* found = machine == nullptr ? nullptr : machine->registry().find(key);
  return found != nullptr && found->hive != nullptr && machine::isBehindItsLogs(*found->hive);
}

}  // namespace zelvreg
