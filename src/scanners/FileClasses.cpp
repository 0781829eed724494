#include "scanners/FileClasses.h"

#include <optional>

#include "form/Form42.h"
#include "registry/Hives.h"
#include "registry/RegistryValues.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/References.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 6;

struct Scan {
  Form42& form;
  ScannerRun run;
};

// A command to report: its key, and the missing program, or nothing if the key is empty.
struct BadCommand {
  std::string key;
  std::string program;
  bool isEmptyKey = false;
};

// A number instead of a text ends at its first NUL, as any command does.
std::string commandOf(const std::string& key) {
  return std::string(untilNul(defaultValueOf(HiveHandle::ClassesRoot, key)));
}

std::optional<BadCommand> judgeCommand(Form42& form, const std::string& openKey,
                                       const std::string& editKey) {
  const bool hasOpen = RegKeyExists(HiveHandle::ClassesRoot, openKey);
  const bool hasEdit = RegKeyExists(HiveHandle::ClassesRoot, editKey);
  if (!hasOpen && !hasEdit) {
    return std::nullopt;
  }
  std::string key = openKey;
  std::string value = commandOf(key);
  if (trim(value).empty()) {
    key = editKey;
    value = commandOf(key);
  }
  if (trim(value).empty()) {
    key = hasEdit ? editKey : openKey;
    form.List7.clear();
    fEnumValue4(form, HiveHandle::ClassesRoot, key);
    if (form.List7.count() == 0) {
      return BadCommand{.key = key, .program = value, .isEmptyKey = true};
    }
  }
  value = programOf(value);
  if (!endsInExe(value) || !hasDriveColon(trim(value)) ||
      FileExists(form, resolvedPath(form, value))) {
    return std::nullopt;
  }
  return BadCommand{.key = key, .program = value};
}

void add(Scan& scan, const std::string& listed, const Finding& finding) {
  scan.form.List2.add(listed);
  addRow(scan.form, scan.run, finding);
  countInTotal(scan.form, scan.run.total);
}

void testClass(Scan& scan, const std::string& name) {
  scan.form.Label3.caption = name;
  scan.form.Label3.refresh();
  if (name.empty()) {
    return;
  }
  const auto bad =
      judgeCommand(scan.form, name + "\\shell\\open\\command", name + "\\shell\\edit\\command");
  if (!bad) {
    return;
  }
  add(scan, bad->program,
      {.location = name,
       .badValue = bad->isEmptyKey ? std::string_view() : bad->program,
       .kindCode = bad->isEmptyKey ? "771" : "7",
       .rootName = longName(HiveHandle::ClassesRoot),
       .subKey = bad->key,
       .iconKey = categoryAt(categoryRow).icon});
}

void testMediaType(Scan& scan, const std::string& name) {
  const std::string key = std::string(scannedKeys::mediaTypes) + "\\" + name;
  std::string extension;
  GetRegString(HiveHandle::ClassesRoot, key, "Extension", extension);
  // Without an extension this is the root itself, which always exists.
  if (RegKeyExists(HiveHandle::ClassesRoot, extension)) {
    return;
  }
  add(scan, extension,
      {.location = extension,
       .badValue = "Extension",
       .kindCode = "771",
       .rootName = longName(HiveHandle::ClassesRoot),
       .subKey = key,
       .iconKey = categoryAt(categoryRow).icon});
}

// Walks the subkeys of one key; false when the user has cancelled.
template <typename Test>
bool walk(Scan& scan, const char* key, Test&& test) {
  Form42& form = scan.form;
  form.List1.clear();
  fEnumKey(form, HiveHandle::ClassesRoot, key);
  int index = 0;
  do {
    form.messages.doEvents();
    test(scan, std::string(trim(form.List1.text(index))));
    ++index;
    showProblems(form, categoryRow, scan.run.found);
    if (form.cancelRequested) {
      return false;
    }
  } while (index < form.List1.count());
  saveTotalFound(form);
  return true;
}

}  // namespace

void Command12(Form42& form) {
  showCaption(form, categoryRow);
  Scan scan{.form = form, .run = {.row = nextRow(form), .total = TotalIsSaved::AtTheEnd}};
  form.List2.clear();
  if (walk(scan, scannedKeys::classes, testClass)) {
    walk(scan, scannedKeys::mediaTypes, testMediaType);
  }
  form.keptStatus = ERROR_SUCCESS;
  storeRowCount(form);
}

}  // namespace zelvreg
