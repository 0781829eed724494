// What one repair of the ticked rows will do, row by row.
#ifndef ZELVREG_REPAIR_REPAIR_PLAN_H
#define ZELVREG_REPAIR_REPAIR_PLAN_H

#include <cstddef>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "form/RepairOutcome.h"
#include "repair/RowPlan.h"

namespace zelvreg {

struct Form42;

class RepairPlan {
 public:
  // Judges the ticked rows in the order of the repair, each in the state that the earlier ones
  // leave. The tag of each row becomes the number of its plan.
  explicit RepairPlan(Form42& form);

  // In the order of the repair.
  [[nodiscard]] std::span<const RowPlan> rows() const { return plans; }
  // The plan of a row of the list; null if it was not ticked or has no kind.
  [[nodiscard]] const RowPlan* rowPlan(const Form42& form, std::size_t row) const;

  // How many rows will leave the list, and the full paths of what their steps will take, each once.
  [[nodiscard]] std::size_t rowsThatGo() const { return goingRows; }
  [[nodiscard]] std::vector<std::string> takings() const;
  // What will be left alone.
  [[nodiscard]] std::set<LeftAlone> leftAlone() const;

 private:
  void addGroup(Form42& form, RegistryState& registry, std::span<const int> codes);

  std::vector<RowPlan> plans;
  std::size_t goingRows = 0;
};

}  // namespace zelvreg

#endif
