#include "repair/SafetyExport.h"

#include <windows.h>

#include "registry/RegistryTextWriter.h"
#include "repair/ExportPlan.h"
#include "runtime/DateTime.h"
#include "runtime/FileText.h"

namespace zelvreg {
namespace {

void addStep(ExportPlan& plan, const RepairStep& step, const StepTarget& target) {
  const HiveHandle hive = HiveFromShortName(target.hive);
  switch (step.step) {
    case Step::Grant:
      plan.addSecurity(hive, target.key);
      break;
    case Step::DeleteValue:
      plan.addValue(hive, target.key, target.value);
      break;
    case Step::EmptyDefault:
      plan.addDefault(hive, target.key);
      break;
    default:
      plan.addTree(hive, deletedKey(step, target));
      break;
  }
}

// What the guard refuses is not taken, so it need not come back.
void addRows(const RepairPlan& repair, ExportPlan& plan) {
  for (const RowPlan& row : repair.rows()) {
    for (std::size_t index = 0; index < row.steps.size(); ++index) {
      if (row.steps[index].isAllowed()) {
        addStep(plan, row.kind->steps[index], row.targets[index]);
      }
    }
  }
}

// "20260131-134506"
std::string stampOf(const DateTime& time) {
  const std::string day = dateText(time, "");
  return day.substr(4) + day.substr(2, 2) + day.substr(0, 2) + "-" + timeText(time, "");
}

bool isThere(const std::string& path) {
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// A name that no export has yet.
std::string freeName(const std::string& folder) {
  const std::string stamp = folder + "\\" + stampOf(localDateTime());
  std::string path = stamp + ".reg";
  for (int number = 2; isThere(path); ++number) {
    path = stamp + "-" + std::to_string(number) + ".reg";
  }
  return path;
}

bool writeFile(const Form42& form, const std::string& bytes) {
  // A folder that is there already, or that cannot be made, shows when the file is written.
  std::string folder = form.programFolder;
  for (const char* below : {"\\backup", "\\registry"}) {
    folder += below;
    CreateDirectoryA(folder.c_str(), nullptr);
  }
  return replaceFileText(freeName(folder), bytes);
}

}  // namespace

bool writeSafetyExport(const Form42& form, const RepairPlan& repair) {
  ExportPlan plan;
  addRows(repair, plan);
  RegistryTextWriter writer;
  if (!plan.write(writer)) {
    return false;
  }
  return writer.isEmpty() || writeFile(form, writer.bytes());
}

}  // namespace zelvreg
