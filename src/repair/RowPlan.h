// What the repair of one row would take, and what of it is allowed: a repair takes what its finding
// names and nothing else, and a key whole only if nothing in it is living.
#ifndef ZELVREG_REPAIR_ROW_PLAN_H
#define ZELVREG_REPAIR_ROW_PLAN_H

#include <optional>
#include <string>
#include <vector>

#include "form/RepairOutcome.h"
#include "repair/NamedRecord.h"
#include "repair/RepairTable.h"
#include "repair/StepReach.h"

namespace zelvreg {

struct Form42;

// What one step would delete or change, and why it is left alone.
struct StepPlan {
  std::vector<RecordPlace> takings;
  std::vector<LeftAlone> leftAlone;

  // A step that would take nothing is harmless.
  [[nodiscard]] bool isAllowed() const { return leftAlone.empty(); }
};

struct RowPlan {
  const RepairKind* kind = nullptr;
  std::optional<NamedRecord> named;
  // One for each of the kind's steps.
  std::vector<StepTarget> targets;
  std::vector<StepPlan> steps;
  // Whether the repair as a whole is to do away with what the finding names.
  bool shouldGo = false;

  // Whether something of it was refused.
  [[nodiscard]] bool isLeftAlone() const;
  // Whether what the finding names is no longer there. Where nothing was found by that name,
  // nothing of it can have gone.
  [[nodiscard]] bool isGone(const RegistryState& registry) const;
};

// Judges all steps of a row of this kind, each in the state that those before it leave, and notes
// in `registry` what will be gone. Where the form does not protect, everything is allowed.
RowPlan planRow(Form42& form, RegistryState& registry, std::size_t row, const RepairKind& kind,
                HiveHandle root);

// One step once more, in the state that there is now.
StepPlan planStep(const Form42& form, const RegistryState& registry,
                  const std::optional<NamedRecord>& named, const RepairStep& step,
                  const StepTarget& target);

}  // namespace zelvreg

#endif
