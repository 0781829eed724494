#include "repair/RepairSteps.h"

#include <windows.h>
// shlwapi needs windows.h before it.
#include <shlwapi.h>

#include <vector>

#include "form/Form42.h"
#include "keys/Deletion.h"
#include "keys/HeldAccessList.h"
#include "keys/RootHandles.h"
#include "registry/Permissions.h"
#include "registry/RegistryValues.h"
#include "registry/View64.h"
#include "repair/RepairPlan.h"
#include "runtime/Environment.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// One row's steps, as its plan allows them.
class RowRepair {
 public:
  RowRepair(Form42& formOfRow, const RowPlan& planOfRow) : form(formOfRow), plan(planOfRow) {}
  RowRepair(const RowRepair&) = delete;
  RowRepair& operator=(const RowRepair&) = delete;
  // What was given for the row is taken back where its key stays.
  ~RowRepair() {
    for (const HeldAccessList& list : held) {
      list.restore();
    }
  }

  void take(std::size_t index, const StepTarget& target) {
    const RepairStep& step = plan.kind->steps[index];
    const bool isCalled = step.step != Step::DeleteIfKept || form.keptStatus != ERROR_SUCCESS;
    if (!isCalled) {
      return;
    }
    if (isAllowed(index, target)) {
      call(step, target);
    } else if (step.step == Step::DeleteKey) {
      form.keptStatus = ERROR_ACCESS_DENIED;
    }
  }

 private:
  // By the plan, and by what there is now.
  bool isAllowed(std::size_t index, const StepTarget& target) {
    const RepairStep& step = plan.kind->steps[index];
    const StepPlan& planned = plan.steps[index];
    if (step.step == Step::Grant) {
      return planned.isAllowed();
    }
    const StepPlan now =
        planned.isAllowed() ? planStep(form, RegistryState(), plan.named, step, target) : planned;
    form.repairOutcome.refused.insert(now.leftAlone.begin(), now.leftAlone.end());
    return now.isAllowed();
  }

  void call(const RepairStep& step, const StepTarget& target) {
    form.repairOutcome.hasBegun = true;
    const HiveHandle hive = HiveFromShortName(target.hive);
    const std::string& key = target.key;
    LONG rc = 0;
    switch (step.step) {
      case Step::Grant:
        grant(target);
        break;
      case Step::DeleteValue:
        fDeleteValue(target.hive, key, target.value, rc);
        break;
      case Step::DeleteSubkey:
        fDeleteKey(target.hive, key, target.value, rc);
        break;
      case Step::DeleteKey:
        form.keptStatus = RegDeleteKeyW(systemKey(hive), Wide(key).get());
        break;
      case Step::DeleteTree:
        DeleteRegistryTree(hive, key);
        break;
      case Step::DeleteByProvider:
        DeleteSubkeys2(form, hive, key);
        break;
      case Step::DeleteIfKept:
        SHDeleteKeyW(systemKey(hive), Wide(key).get());
        break;
      case Step::EmptyDefault:
        SetRegistryValue(hive, key, target.value, "");
        break;
    }
  }

  void grant(const StepTarget& target) {
    const auto place = reachOfGrant(RegistryState(), target);
    if (form.safeguards.protects && place) {
      held.emplace_back(place->hive, place->path);
    }
    GrantKeyAccess(form, HiveFromShortName(target.hive), target.key,
                   environmentVariable("UserName"));
  }

  Form42& form;
  const RowPlan& plan;
  std::vector<HeldAccessList> held;
};

}  // namespace

bool takeSteps(Form42& form, std::size_t row, const RepairKind& kind, std::string& shortRoot) {
  shortRoot = shortRootName(form, row, kind.code, shortRoot);
  const RowPlan* planned = form.repairPlan ? form.repairPlan->rowPlan(form, row) : nullptr;
  RowPlan own;
  if (planned == nullptr || planned->kind != &kind) {
    RegistryState registry;
    own = planRow(form, registry, row, kind, shortRoot);
    planned = &own;
  }
  {
    RowRepair repair(form, *planned);
    for (std::size_t index = 0; index < kind.steps.size(); ++index) {
      repair.take(index, targetOf(form, row, kind.steps[index], shortRoot));
    }
  }
  return planned->isGone(RegistryState());
}

}  // namespace zelvreg
