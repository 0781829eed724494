#include "repair/RepairPlan.h"

#include <algorithm>
#include <set>

#include "form/Form42.h"
#include "repair/RepairRoutines.h"
#include "text/Wide.h"

namespace zelvreg {

RepairPlan::RepairPlan(Form42& form) {
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    form.View2.setTag(row, 0);
  }
  RegistryState registry;
  for (const RepairRoutine& routine : repairCascade()) {
    for (const std::span<const int> codes : routine.walks) {
      addGroup(form, registry, codes);
    }
  }
  for (RowPlan& plan : plans) {
    plan.shouldGo = plan.isGone(registry);
    // Unless the form protects, a row leaves the list whether or not its repair reaches anything.
    goingRows += plan.shouldGo || !form.safeguards.protects ? 1 : 0;
  }
}

// From the last row to the first, like the routines.
void RepairPlan::addGroup(Form42& form, RegistryState& registry, std::span<const int> codes) {
  HiveHandle root = HiveHandle::Unknown;
  for (std::size_t row = form.View2.count(); row > 0; --row) {
    const auto code =
        std::ranges::find_if(codes, [&](int candidate) { return isOfKind(form, row, candidate); });
    if (code == codes.end() || !form.View2.isChecked(row) || form.View2.tag(row) != 0) {
      continue;
    }
    form.messages.doEvents();
    root = rootOfSteps(form, row, *code, root);
    plans.push_back(planRow(form, registry, row, *repairKind(*code), root));
    form.View2.setTag(row, plans.size());
  }
}

const RowPlan* RepairPlan::rowPlan(const Form42& form, std::size_t row) const {
  const std::size_t tag = form.View2.tag(row);
  return tag >= 1 && tag <= plans.size() ? &plans[tag - 1] : nullptr;
}

std::vector<std::string> RepairPlan::takings() const {
  std::vector<std::string> places;
  std::set<std::string> known;
  for (const RowPlan& row : plans) {
    for (const StepPlan& step : row.steps) {
      for (const RecordPlace& taking : step.takings) {
        const std::string place = utf8(taking.text());
        if (step.isAllowed() && known.insert(place).second) {
          places.push_back(place);
        }
      }
    }
  }
  return places;
}

std::set<LeftAlone> RepairPlan::leftAlone() const {
  std::set<LeftAlone> list;
  for (const RowPlan& row : plans) {
    for (std::size_t index = 0; index < row.steps.size(); ++index) {
      if (row.kind->steps[index].step != Step::Grant) {
        list.insert(row.steps[index].leftAlone.begin(), row.steps[index].leftAlone.end());
      }
    }
  }
  return list;
}

}  // namespace zelvreg
