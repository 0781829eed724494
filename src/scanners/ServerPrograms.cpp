#include "scanners/ServerPrograms.h"

#include <initializer_list>

#include "form/Form42.h"
#include "registry/RegistryValues.h"
#include "registry/SubkeyEnumerators.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/References.h"
#include "scanners/WorkList.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t bitmapsCategoryRow = 7;

void listClasses(Form42& form, const char* hive, const char* key) {
  std::string names;
  LONG rc = 0;
  form.List1.clear();
  form.List2.clear();
  fEnumKey(form, hive, key, names, rc);
  if (rc == ERROR_FILE_NOT_FOUND) {
    fEnumKey(form, "HKCU", "clsid", names, rc);
  }
}

// Calls `test(name)` for each class that has a name, after showing how far the walk is.
template <typename Test>
void walkClasses(Form42& form, Test&& test) {
  walkEntries(form, form.List1, LastTurn::TheLast, [&](int index, const std::string& entry) {
    form.Label3.caption = "Checking    " + decimal(index + 1) + " / " + decimal(form.List1.count());
    form.Label3.refresh();
    const std::string name(trim(entry));
    if (!name.empty()) {
      test(name);
    }
  });
}

void testMergedServer(Form42& form, ScannerRun& run, const std::string& name) {
  const std::string key = "clsid\\" + name + "\\InprocServer32";
  Variant value;
  LONG code = 0;
  // Read in the 32-bit view, although the names are of the 64-bit one.
  fReadValue("HKCr", key, "", "S", "", value, code);
  std::string path = resolvedPath(form, withoutQuotes(textOf(value)));
  const std::string_view trimmed = trim(path);
  const bool isEmptyServer = trimmed.empty() && code == ERROR_SUCCESS;
  if (!isEmptyServer) {
    if (!hasDriveColon(trimmed) || trimmed.front() == '%') {
      return;
    }
    path = cutAfterExtension(path);
    if (!endsInExe(path) || FileExists(form, path)) {
      return;
    }
  }
  form.List2.add(path);
  addRow(form, run,
         {.location = key,
          .badValue = path,
          .kindCode = "8",
          .rootName = "HKEY_CLASSES_ROOT",
          .subKey = key,
          .iconKey = "g"});
  ++form.categoryFound;
}

struct Server {
  std::string key;
  std::string value;
};

// The first of the keys below a class that has a default value; without one both are empty.
Server firstServer(HiveHandle hive, const std::string& classKey,
                   std::initializer_list<const char*> keys) {
  for (const char* key : keys) {
    const std::string value = defaultValueOf(hive, classKey + key);
    if (!trim(value).empty()) {
      return {classKey + key, value};
    }
  }
  return {};
}

// The program that a server text names, if it is gone; empty otherwise.
std::string missingProgram(const Form42& form, const std::string& value) {
  if (!hasDriveColon(value)) {
    return {};
  }
  std::string program = programOf(value);
  if (!endsInExe(program)) {
    return {};
  }
  program = trim(program);
  return isListedWhenUnhidden(form, program) ? std::string() : program;
}

// Writes the listed texts once more, to the rows after those that were there before. There is
// always a first turn, which counts like any other.
template <typename AfterTurn>
void writeListedTexts(Form42& form, const char* kindCode, AfterTurn&& afterTurn) {
  const std::size_t firstRow = nextRow(form);
  int index = 0;
  do {
    const std::size_t row = firstRow + static_cast<std::size_t>(index);
    form.View2.setText(row, badValueColumn, form.List2.text(index));
    form.View2.setText(row, kindCodeColumn, kindCode);
    form.View2.setSmallIcon(row, "g");
    ++form.categoryFound;
    afterTurn();
    ++index;
  } while (index < form.List2.count());
}

}  // namespace

void Command14(Form42& form) {
  form.categoryFound = 0;
  ScannerRun run{.row = nextRow(form)};
  listClasses(form, "HKCR", "clsid");
  walkClasses(form, [&](const std::string& name) { testMergedServer(form, run, name); });
  storeRowCount(form);
}

void Command18(Form42& form) {
  listClasses(form, "HKLM", scannedKeys::machineClassIds);
  walkClasses(form, [&](const std::string& name) {
    const Server server = firstServer(
        HiveHandle::LocalMachine, std::string(scannedKeys::machineClassIds) + "\\" + name,
        {"\\InprocServer32", "\\LocalServer32", "\\InprocServer", "\\LocalServer"});
    const std::string program = missingProgram(form, server.value);
    if (!program.empty()) {
      form.List2.add(program);
      form.View2.add(server.key);
    }
  });
  writeListedTexts(form, "8", [] {});
  storeRowCount(form);
}

void Command19(Form42& form) {
  ScannerRun run{.row = nextRow(form)};
  listClasses(form, "HKCR", "clsid");
  walkClasses(form, [&](const std::string& name) {
    const Server bitmap = firstServer(HiveHandle::ClassesRoot, "clsid\\" + name,
                                      {"\\toolboxbitmap32", "\\toolboxbitmap"});
    const std::string program = missingProgram(form, bitmap.value);
    if (!program.empty()) {
      form.List2.add(program);
      addRow(form, run,
             {.location = bitmap.key,
              .badValue = program,
              .kindCode = "10",
              .rootName = "HKEY_CLASSES_ROOT",
              .subKey = bitmap.key,
              .iconKey = "g"});
      ++form.categoryFound;
    }
  });
  writeListedTexts(form, "10",
                   [&form] { showProblems(form, bitmapsCategoryRow, form.categoryFound); });
  storeRowCount(form);
}

}  // namespace zelvreg
