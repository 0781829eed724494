// What the repair of one row would take, and what of it is allowed. A repair takes only what its
// finding names, and a whole key only if nothing in it is in use.
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
  // Whether the repair is expected to delete what the finding names.
  bool shouldGo = false;

  // Whether any of it was refused.
  [[nodiscard]] bool isLeftAlone() const;
  // Whether what the finding names is gone. False if nothing was found by that name.
  [[nodiscard]] bool isGone(const RegistryState& registry) const;
};

// Judges all steps of a row of this kind, each in the state that the earlier ones leave, and notes
// in `registry` what will be gone. Without protection everything is allowed.
RowPlan planRow(Form42& form, RegistryState& registry, std::size_t row, const RepairKind& kind,
                HiveHandle root);

// Judges one step again, in the state that the registry is in now.
StepPlan planStep(const Form42& form, const RegistryState& registry,
                  const std::optional<NamedRecord>& named, const RepairStep& step,
                  const StepTarget& target);

}  // namespace zelvreg

#endif
