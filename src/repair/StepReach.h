// What a step of a repair reaches, in the state that the registry is in.
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

// The key that a step would give rights on; none when it is not there.
std::optional<TruePlace> reachOfGrant(const RegistryState& registry, const StepTarget& target);

}  // namespace zelvreg

#endif
