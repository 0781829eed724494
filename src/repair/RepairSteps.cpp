#include "repair/RepairSteps.h"

#include <windows.h>
// shlwapi needs windows.h before it.
#include <shlwapi.h>

#include <vector>

#include "form/Form42.h"
#include "keys/AccountSids.h"
#include "keys/Deletion.h"
#include "keys/HeldAccessList.h"
#include "keys/RootHandles.h"
#include "registry/RegistryValues.h"
#include "registry/View64.h"
#include "registry/setpermission.h"
#include "repair/RepairPlan.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// One row's steps, as its plan allows them.
class RowRepair {
 public:
  RowRepair(Form42& formOfRow, const RowPlan& planOfRow) : form(formOfRow), plan(planOfRow) {}
  RowRepair(const RowRepair&) = delete;
  RowRepair& operator=(const RowRepair&) = delete;
  // Rights that were given for the row are taken back if its key stays.
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
  // According to the plan, and to the registry as it is now.
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
    const std::string& key = target.key;
    const std::string rootText(shortName(target.root));
    switch (step.step) {
      case Step::Grant:
        grant(target);
        break;
      case Step::DeleteValue:
        fDeleteValue(rootText, key, target.value);
        break;
      case Step::DeleteSubkey:
        fDeleteKey(rootText, key, target.value);
        break;
      case Step::DeleteKey:
        form.keptStatus = RegDeleteKeyW(systemKey(target.root), Wide(key).get());
        break;
      case Step::DeleteTree:
        DeleteRegistryTree(target.root, key);
        break;
      case Step::DeleteByProvider:
        DeleteSubkeys2(form, target.root, key);
        break;
      case Step::DeleteIfKept:
        SHDeleteKeyW(systemKey(target.root), Wide(key).get());
        break;
      case Step::EmptyDefault:
        SetRegistryValue(target.root, key, target.value, "");
        break;
    }
  }

  void grant(const StepTarget& target) {
    const auto place = reachOfGrant(RegistryState(), target);
    if (form.safeguards.protects && place) {
      held.emplace_back(place->hive, place->path);
    }
    GrantKeyAccess(form, target.root, target.key, processAccount());
  }

  Form42& form;
  const RowPlan& plan;
  std::vector<HeldAccessList> held;
};

}  // namespace

bool takeSteps(Form42& form, std::size_t row, const RepairKind& kind, HiveHandle& root) {
  root = rootOfSteps(form, row, kind.code, root);
  const RowPlan* planned = form.repairPlan ? form.repairPlan->rowPlan(form, row) : nullptr;
  RowPlan own;
  if (planned == nullptr || planned->kind != &kind) {
    RegistryState registry;
    own = planRow(form, registry, row, kind, root);
    planned = &own;
  }
  {
    RowRepair repair(form, *planned);
    for (std::size_t index = 0; index < kind.steps.size(); ++index) {
      repair.take(index, targetOf(form, row, kind.steps[index], root));
    }
  }
  return planned->isGone(RegistryState());
}

}  // namespace zelvreg
