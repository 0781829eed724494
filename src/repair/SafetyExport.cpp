#include "repair/SafetyExport.h"

#include <windows.h>

#include "form/Form42.h"
#include "keys/RegistryTextWriter.h"
#include "keys/RootHandles.h"
#include "repair/ExportPlan.h"
#include "runtime/DateTime.h"
#include "runtime/FileText.h"
#include "runtime/PrivateFiles.h"
#include "scan/OwnPaths.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

void addStep(ExportPlan& plan, const RepairStep& step, const StepTarget& target) {
  switch (step.step) {
    case Step::Grant:
      plan.addSecurity(target.root, target.key);
      break;
    case Step::DeleteValue:
      plan.addValue(target.root, target.key, target.value);
      break;
    case Step::EmptyDefault:
      plan.addDefault(target.root, target.key);
      break;
    default:
      plan.addTree(target.root, deletedKey(step, target));
      break;
  }
}

// What the guard refuses is not deleted, so it is not exported.
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
  return GetFileAttributesW(Wide(path).get()) != INVALID_FILE_ATTRIBUTES;
}

// A name that no export has yet, without ".reg".
std::string freeStem(const Form42& form) {
  const std::string stamp = stampOf(localDateTime());
  std::string stem = stamp;
  for (int number = 2; isThere(exportPath(form, stem)); ++number) {
    stem = stamp + "-" + std::to_string(number);
  }
  return stem;
}

bool writeFile(Form42& form, const std::string& bytes) {
  // If a folder cannot be created, writing the file fails.
  std::string folder = form.programFolder;
  for (const char* below : {"\\backup", "\\registry"}) {
    folder += below;
    makePrivateFolder(folder);
  }
  const std::string stem = freeStem(form);
  if (!replaceFileText(exportPath(form, stem), bytes, FileReaders::Administrators)) {
    return false;
  }
  form.exportStem = stem;
  return true;
}

}  // namespace

bool writeSafetyExport(Form42& form, const RepairPlan& repair) {
  form.exportStem.clear();
  ExportPlan plan;
  addRows(repair, plan);
  RegistryTextWriter writer;
  if (!plan.write(writer)) {
    return false;
  }
  return writer.isEmpty() || writeFile(form, writer.bytes());
}

void removeSafetyExport(Form42& form) {
  if (!form.exportStem.empty()) {
    DeleteFileW(Wide(exportPath(form, form.exportStem)).get());
    form.exportStem.clear();
  }
}

}  // namespace zelvreg
