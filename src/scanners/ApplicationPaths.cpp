#include "scanners/ApplicationPaths.h"

#include "form/Form42.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/References.h"
#include "scanners/WorkList.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 3;

struct Scan {
  Form42& form;
  ScannerRun run;
};

// `listed` is added to List2 before the finding: the name of the current entry.
void add(Scan& scan, const std::string& listed, std::string_view location,
         std::string_view badValue, HiveHandle root, std::string_view subKey) {
  scan.form.List2.add(listed);
  addRow(scan.form, scan.run,
         {.location = location,
          .badValue = badValue,
          .kindCode = "3",
          .rootName = longName(root),
          .subKey = subKey,
          .iconKey = categoryAt(categoryRow).icon});
  countInTotal(scan.form);
}

// --- Lists of application paths: each subkey is a program, its default value the path. ---

enum class DefaultIs { Trimmed, AsItIs };

struct AppPathsList {
  const char* key;    // walked and read
  const char* ntKey;  // read instead where the system keeps its keys under "Windows nt", or null
  const char* granted;
  const char* ntGranted;
  DefaultIs defaultIs;
};

// The first list is read under "Windows" even where it was walked under "Windows nt".
constexpr AppPathsList nativeList{
    scannedKeys::appPaths,
    nullptr,
    "Software\\Microsoft\\windows\\currentversion\\app paths\\",
    "Software\\Microsoft\\windows nt\\currentversion\\app paths\\",
    DefaultIs::Trimmed,
};
constexpr AppPathsList wow64List{
    scannedKeys::appPaths32,
    scannedKeys::appPaths32Nt,
    "Software\\Wow6432Node\\Microsoft\\windows\\currentversion\\app paths\\",
    "Software\\Wow6432Node\\Microsoft\\windows nt\\currentversion\\app paths\\",
    DefaultIs::AsItIs,
};

std::string readProgram(const Scan& scan, const AppPathsList& list, const std::string& keyName) {
  std::string path = GetKeyValue64(scan.form, HiveHandle::LocalMachine,
                                   std::string(list.key) + "\\" + keyName, "");
  if (list.ntKey != nullptr && scan.form.ntSpelling == 2) {
    path = GetKeyValue64(scan.form, HiveHandle::LocalMachine,
                         std::string(list.ntKey) + "\\" + keyName, "");
  }
  if (list.defaultIs == DefaultIs::Trimmed) {
    path = trim(path);
  }
  return resolvedPath(scan.form, path);
}

void testAppPath(Scan& scan, const AppPathsList& list, const std::string& rootKey,
                 const std::string& keyName) {
  // Without a name the user is given access to the list itself.
  grantCurrentUser(scan.form, HiveHandle::LocalMachine, list.granted + keyName);
  grantCurrentUser(scan.form, HiveHandle::LocalMachine, list.ntGranted + keyName);
  std::string pathText = readProgram(scan, list, keyName);
  if (keyName.empty()) {
    return;
  }
  scan.form.List7.clear();
  fEnumValue4(scan.form, HiveHandle::LocalMachine, rootKey + "\\" + keyName);
  // A program with a named value is skipped, whatever its path.
  if (scan.form.List7.count() > 0) {
    return;
  }
  pathText = withoutQuotes(pathText);
  // No file has an empty name, so a program without a path is reported too.
  if (!FileExists(scan.form, resolvedPath(scan.form, pathText))) {
    add(scan, keyName, pathText, keyName, HiveHandle::LocalMachine, rootKey);
  }
}

void walkAppPaths(Scan& scan, const AppPathsList& list, const std::string& rootKey) {
  walkEntries(scan.form, scan.form.List1, LastTurn::OneAfterTheLast,
              [&](int /*index*/, const std::string& entry) {
                testAppPath(scan, list, rootKey, std::string(trim(entry)));
                showFound(scan.form, categoryRow, scan.run);
              });
  showNothingFound(scan.form, categoryRow, scan.run);
}

void scanAppPaths(Scan& scan) {
  Form42& form = scan.form;
  form.List1.clear();
  form.List2.clear();
  std::string rootKey = nativeList.key;
  if (fEnumKey(form, HiveHandle::LocalMachine, rootKey).rc == ERROR_FILE_NOT_FOUND) {
    fEnumKey(form, HiveHandle::LocalMachine,
             "Software\\Microsoft\\windows nt\\currentversion\\app paths");
    rootKey = scannedKeys::appPathsNt;
    form.ntSpelling = 2;
  }
  walkAppPaths(scan, nativeList, rootKey);
  form.List1.clear();
  fEnumKey(form, HiveHandle::LocalMachine, wow64List.key);
  walkAppPaths(scan, wow64List, wow64List.key);
  form.List7.clear();
}

// --- Compatibility lists: the value name is the path. ---

void testProgramName(Scan& scan, const char* key, const std::string& entry) {
  const std::string keyName(trim(entry));
  if (keyName.empty()) {
    return;
  }
  const std::string pathText = withoutQuotes(resolvedPath(scan.form, keyName));
  if (!FileExists(scan.form, resolvedPath(scan.form, pathText))) {
    add(scan, keyName, entry, entry, HiveHandle::CurrentUser, key);
  }
}

void scanProgramNames(Scan& scan, const char* key) {
  fEnumValue4(scan.form, HiveHandle::CurrentUser, key);
  grantCurrentUser(scan.form, HiveHandle::CurrentUser, key);
  walkEntries(scan.form, scan.form.List7, LastTurn::OneAfterTheLast,
              [&](int /*index*/, const std::string& entry) {
                testProgramName(scan, key, entry);
                showFound(scan.form, categoryRow, scan.run);
              });
}

void scanCompatibilityLists(Scan& scan) {
  scanProgramNames(scan, scannedKeys::compatibilityStore);
  showNothingFound(scan.form, categoryRow, scan.run);
  scan.form.List7.clear();
  scanProgramNames(scan, scannedKeys::compatibilityLayers);
}

// --- Keys of Software: whatever looks like a path in a value directly under one of them. ---

struct SoftwareKey {
  HiveHandle root;
  const char* key;
};
constexpr SoftwareKey softwareKeys[] = {
    {HiveHandle::LocalMachine, scannedKeys::software},
    {HiveHandle::LocalMachine, scannedKeys::software32},
    {HiveHandle::CurrentUser, scannedKeys::software},
};

void testValues(Scan& scan, const SoftwareKey& software, const std::string& keyName) {
  const std::string rootKey = std::string(software.key) + "\\" + keyName;
  scan.form.List7.clear();
  fEnumValue4(scan.form, software.root, rootKey);
  for (int index = 0; index < scan.form.List7.count(); ++index) {
    const std::string name = scan.form.List7.text(index);
    if (namesMissingPath(scan.form, GetKeyValue64(scan.form, software.root, rootKey, name))) {
      add(scan, keyName, name, name, software.root, rootKey);
    }
    if (isStopAsked(scan.form)) {
      return;
    }
  }
}

void scanSoftware(Scan& scan, const SoftwareKey& software) {
  scan.form.List1.clear();
  scan.form.List2.clear();
  fEnumKey(scan.form, software.root, software.key);
  walkEntries(scan.form, scan.form.List1, LastTurn::TheLast,
              [&](int /*index*/, const std::string& entry) {
                testValues(scan, software, std::string(trim(entry)));
                showFound(scan.form, categoryRow, scan.run);
              });
}

}  // namespace

void Command5(Form42& form) {
  showCaption(form, categoryRow);
  Scan scan{.form = form, .run = {.row = nextRow(form)}};
  scanAppPaths(scan);
  scanCompatibilityLists(scan);
  for (const SoftwareKey& software : softwareKeys) {
    scanSoftware(scan, software);
  }
  showNothingFound(scan.form, categoryRow, scan.run);
  storeRowCount(form);
}

}  // namespace zelvreg
