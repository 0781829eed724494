#include "repair/RepairSteps.h"

#include <windows.h>
// shlwapi needs windows.h before it.
#include <shlwapi.h>

#include <algorithm>

#include "registry/Deletion.h"
#include "registry/Permissions.h"
#include "registry/RegistryValues.h"
#include "registry/View64.h"
#include "repair/ProtectedKeys.h"
#include "runtime/Environment.h"

namespace zelvreg {
namespace {

const char* longName(HiveHandle hive) {
  switch (hive) {
    case HiveHandle::ClassesRoot:
      return "HKEY_CLASSES_ROOT";
    case HiveHandle::CurrentUser:
      return "HKEY_CURRENT_USER";
    case HiveHandle::Users:
      return "HKEY_USERS";
    default:
      return "HKEY_LOCAL_MACHINE";
  }
}

bool deletesKey(Step step) {
  return step == Step::DeleteSubkey || step == Step::DeleteKey || step == Step::DeleteTree ||
         step == Step::DeleteByProvider || step == Step::DeleteIfKept;
}

// One row's steps; `kept` is the answer of its RegDeleteKeyA.
class RowRepair {
 public:
  explicit RowRepair(Form42& formOfRow) : form(formOfRow) {}

  void take(const RepairStep& step, const std::string& hiveName, const std::string& key,
            const std::string& value) {
    const HiveHandle hive = HiveFromShortName(hiveName);
    if (deletesKey(step.step) && isSpared(step, hive, key, value)) {
      kept = step.step == Step::DeleteKey ? ERROR_ACCESS_DENIED : kept;
      return;
    }
    LONG rc = 0;
    switch (step.step) {
      case Step::Grant:
        GrantKeyAccess(form, hive, key, environmentVariable("UserName"));
        break;
      case Step::DeleteValue:
        fDeleteValue(hiveName, key, value, rc);
        break;
      case Step::DeleteSubkey:
        fDeleteKey(hiveName, key, value, rc);
        break;
      case Step::DeleteKey:
        kept = RegDeleteKeyA(systemKey(hive), key.c_str());
        break;
      case Step::DeleteTree:
        DeleteRegistryTree(hive, key);
        break;
      case Step::DeleteByProvider:
        DeleteSubkeys2(form, hive, key);
        break;
      case Step::DeleteIfKept:
        if (kept != ERROR_SUCCESS) {
          SHDeleteKeyA(systemKey(hive), key.c_str());
        }
        break;
      case Step::EmptyDefault:
        SetRegistryValue(hive, key, value, "");
        break;
    }
  }

 private:
  bool isSpared(const RepairStep& step, HiveHandle hive, const std::string& key,
                const std::string& value) {
    const std::string target = step.step == Step::DeleteSubkey ? key + "\\" + value : key;
    if (!form.safeguards.protects || !isProtectedKey(hive, target)) {
      return false;
    }
    const std::string path = std::string(longName(hive)) + "\\" + target;
    if (std::ranges::find(form.sparedKeys, path) == form.sparedKeys.end()) {
      form.sparedKeys.push_back(path);
    }
    return true;
  }

  Form42& form;
  LONG kept = ERROR_SUCCESS;
};

}  // namespace

void takeSteps(Form42& form, std::size_t row, const RepairKind& kind, std::string& shortRoot) {
  shortRoot = shortRootName(form, row, kind.code, shortRoot);
  RowRepair repair(form);
  for (const RepairStep& step : kind.steps) {
    const std::string hive = step.hive == nullptr ? shortRoot : step.hive;
    repair.take(step, hive, textFor(form, row, step.key), textFor(form, row, step.value));
  }
}

}  // namespace zelvreg
