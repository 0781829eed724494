#include "scanners/KeptScanners.h"

#include <initializer_list>

#include "form/Form42.h"
#include "registry/RegistryValues.h"
#include "registry/SubkeyEnumerators.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/References.h"
#include "scanners/WorkList.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 7;

void listClasses(Form42& form, HiveHandle root, const char* key) {
  form.List1.clear();
  form.List2.clear();
  if (fEnumKey(form, root, key).rc == ERROR_FILE_NOT_FOUND) {
    fEnumKey(form, HiveHandle::CurrentUser, "clsid");
  }
}

// Shows the progress of the walk, then calls `test(name)`, for each class that has a name.
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
  fReadValue(std::string(shortName(HiveHandle::ClassesRoot)), key, "", "S", "", value, code);
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
          .rootName = longName(HiveHandle::ClassesRoot),
          .subKey = key,
          .iconKey = categoryAt(categoryRow).icon});
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

// The program that a server's text names, if it is missing; empty otherwise.
std::string missingProgram(Form42& form, const std::string& value) {
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

// Writes the listed texts once more, to the rows after the old ones. The loop runs at least once,
// and each time counts.
template <typename AfterTurn>
void writeListedTexts(Form42& form, const char* kindCode, AfterTurn&& afterTurn) {
  const std::size_t firstRow = nextRow(form);
  int index = 0;
  do {
    const std::size_t row = firstRow + static_cast<std::size_t>(index);
    form.View2.setText(row, badValueColumn, form.List2.text(index));
    form.View2.setText(row, kindCodeColumn, kindCode);
    form.View2.setSmallIcon(row, categoryAt(categoryRow).icon);
    ++form.categoryFound;
    afterTurn();
    ++index;
  } while (index < form.List2.count());
}

std::string firstNumericEntry(const ListBox& list) {
  for (int index = 0; index < list.count(); ++index) {
    const std::string_view entry = trim(list.text(index));
    if (convertedNumber(entry).has_value()) {
      return std::string(entry);
    }
  }
  return {};
}

// The path of the key of a library's 32-bit file. Every part may be empty.
std::string libraryFileKey(Form42& form, const std::string& guid) {
  fEnumKey(form, HiveHandle::ClassesRoot, "typelib\\" + guid);
  const std::string version = firstNumericEntry(form.List1);
  fEnumKey1(form, HiveHandle::ClassesRoot, "typelib\\" + guid + "\\" + version);
  const std::string locale(trim(form.List4.text(0)));
  return guid + "\\" + version + "\\" + locale + "\\win32";
}

void testLibraryFile(Form42& form, ScannerRun& run, const std::string& fileKey) {
  const std::string value = defaultValueOf(HiveHandle::ClassesRoot, "typelib\\" + fileKey);
  if (isListedWhenUnhidden(form, value)) {
    return;
  }
  const std::string key = "Typelib\\" + fileKey;
  form.List2.add(value);
  addRow(form, run,
         {.location = key,
          .badValue = value,
          .kindCode = "9",
          .rootName = longName(HiveHandle::ClassesRoot),
          .subKey = key,
          .iconKey = categoryAt(categoryRow).icon});
  ++form.categoryFound;
}

// Moves the libraries out of the way of their versions. An empty list gives one empty entry.
void moveToList3(Form42& form) {
  int index = 0;
  do {
    form.List3.add(form.List1.text(index));
    ++index;
  } while (index < form.List1.count());
  form.List1.clear();
}

}  // namespace

void Command14(Form42& form) {
  form.categoryFound = 0;
  ScannerRun run{.row = nextRow(form)};
  listClasses(form, HiveHandle::ClassesRoot, "clsid");
  walkClasses(form, [&](const std::string& name) { testMergedServer(form, run, name); });
  storeRowCount(form);
}

void Command16(Form42& form) {
  ScannerRun run{.row = nextRow(form)};
  form.List1.clear();
  form.List2.clear();
  form.List3.clear();
  form.List4.clear();
  fEnumKey(form, HiveHandle::ClassesRoot, "typelib");
  moveToList3(form);
  walkEntries(form, form.List3, LastTurn::TheLast, [&](int /*index*/, const std::string& guid) {
    testLibraryFile(form, run, libraryFileKey(form, guid));
    form.List1.clear();
  });
  storeRowCount(form);
}

void Command18(Form42& form) {
  listClasses(form, HiveHandle::LocalMachine, scannedKeys::machineClassIds);
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
  listClasses(form, HiveHandle::ClassesRoot, "clsid");
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
              .rootName = longName(HiveHandle::ClassesRoot),
              .subKey = bitmap.key,
              .iconKey = categoryAt(categoryRow).icon});
      ++form.categoryFound;
    }
  });
  writeListedTexts(form, "10", [&form] { showProblems(form, categoryRow, form.categoryFound); });
  storeRowCount(form);
}

}  // namespace zelvreg
