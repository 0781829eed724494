// What a step of a repair reaches in a given state of the registry.
#ifndef ZELVREG_REPAIR_STEP_REACH_H
#define ZELVREG_REPAIR_STEP_REACH_H

#include <string>
#include <vector>

#include "repair/NamedRecord.h"
#include "repair/RegistryState.h"
#include "repair/RepairTable.h"

namespace zelvreg {

// What a step of a row works on.
struct StepTarget {
  HiveHandle root = HiveHandle::Unknown;
  std::string key;
  std::string value;
};
StepTarget targetOf(const Form42& form, std::size_t row, const RepairStep& step, HiveHandle root);

// Whether a step deletes keys, and the path of the key that it deletes.
bool deletesKey(Step step);
std::string deletedKey(const RepairStep& step, const StepTarget& target);

// All that the step would delete or change.
std::vector<RecordPlace> reachOf(const RegistryState& registry, const RepairStep& step,
                                 const StepTarget& target);

// The key that a step would grant rights on; std::nullopt if it does not exist.
std::optional<TruePlace> reachOfGrant(const RegistryState& registry, const StepTarget& target);

}  // namespace zelvreg

#endif
