#include "repair/SafetyExport.h"

#include <windows.h>

#include <map>

#include "registry/RegistryTextWriter.h"
#include "repair/ExportPlan.h"
#include "repair/ProtectedKeys.h"
#include "repair/RepairTable.h"
#include "runtime/DateTime.h"
#include "runtime/FileText.h"
#include "scan/Findings.h"
#include "text/Numbers.h"

namespace zelvreg {
namespace {

const RepairKind* kindOfRow(const Form42& form, std::size_t row) {
  const double code = leadingNumber(form.View2.text(row, kindCodeColumn));
  constexpr double highestCode = 1000;
  return code >= 0 && code < highestCode && isOfKind(form, row, static_cast<int>(code))
             ? repairKind(static_cast<int>(code))
             : nullptr;
}

// The kinds that one routine repairs go by the code of its first: a row without a root of its own
// takes the one of the row that the routine had before.
int routineOf(int code) {
  switch (code) {
    case 771:
      return 7;
    case 135:
      return 133;
    default:
      return code;
  }
}

void addTreeUnlessSpared(const Form42& form, ExportPlan& plan, HiveHandle hive,
                         const std::string& key) {
  if (!form.safeguards.protects || !isProtectedKey(hive, key)) {
    plan.addTree(hive, key);
  }
}

void addStep(const Form42& form, ExportPlan& plan, std::size_t row, const RepairStep& step,
             const std::string& shortRoot) {
  const HiveHandle hive = HiveFromShortName(step.hive == nullptr ? shortRoot : step.hive);
  const std::string key = textFor(form, row, step.key);
  switch (step.step) {
    case Step::Grant:
      break;
    case Step::DeleteValue:
      plan.addValue(hive, key, textFor(form, row, step.value));
      break;
    case Step::EmptyDefault:
      plan.addDefault(hive, key);
      break;
    case Step::DeleteSubkey:
      addTreeUnlessSpared(form, plan, hive, key + "\\" + textFor(form, row, step.value));
      break;
    default:
      addTreeUnlessSpared(form, plan, hive, key);
      break;
  }
}

// From the last row to the first, as the routines go.
void addRows(const Form42& form, ExportPlan& plan) {
  std::map<int, std::string> shortRoots;
  for (std::size_t row = form.View2.count(); row > 0; --row) {
    const RepairKind* kind = form.View2.isChecked(row) ? kindOfRow(form, row) : nullptr;
    if (kind == nullptr) {
      continue;
    }
    std::string& shortRoot = shortRoots[routineOf(kind->code)];
    shortRoot = shortRootName(form, row, kind->code, shortRoot);
    for (const RepairStep& step : kind->steps) {
      addStep(form, plan, row, step, shortRoot);
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

bool writeSafetyExport(Form42& form) {
  ExportPlan plan;
  addRows(form, plan);
  RegistryTextWriter writer;
  if (!plan.write(writer)) {
    return false;
  }
  return writer.isEmpty() || writeFile(form, writer.bytes());
}

}  // namespace zelvreg
