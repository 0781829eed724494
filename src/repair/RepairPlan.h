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
  // Judges the ticked rows in the order in which a repair takes them, each in the state that those
  // before it leave. The rows bear their plan's number as their tag from then on.
  explicit RepairPlan(Form42& form);

  // In the order of the repair.
  [[nodiscard]] std::span<const RowPlan> rows() const { return plans; }
  // That of a row of the list; null for one that was not ticked or is of no kind.
  [[nodiscard]] const RowPlan* rowPlan(const Form42& form, std::size_t row) const;

  // How many rows will leave the list, and the whole paths of what their steps will take, each
  // once.
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
