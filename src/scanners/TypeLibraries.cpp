#include "scanners/TypeLibraries.h"

#include "form/Form42.h"
#include "registry/RegistryValues.h"
#include "registry/SubkeyEnumerators.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/References.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 7;

void add(Form42& form, const char* kindCode, const std::string& location,
         const std::string& subKey) {
  ScannerRun run;
  addRow(form, run,
         {.location = location,
          .badValue = "Default",
          .kindCode = kindCode,
          .rootName = longName(HiveHandle::ClassesRoot),
          .subKey = subKey,
          .iconKey = categoryAt(categoryRow).icon});
  countInTotal(form);
  ++form.categoryFound;
  showProblems(form, categoryRow, form.categoryFound);
}

void showKey(Form42& form, const std::string& key) {
  form.Label3.caption = keyPath(HiveHandle::ClassesRoot, key);
}

void testHelpFolder(Form42& form, const std::string& versionKey) {
  const std::string key = versionKey + "\\HELPDIR";
  if (!RegKeyExists(HiveHandle::ClassesRoot, key)) {
    return;
  }
  const std::string value = defaultValueOf(HiveHandle::ClassesRoot, key);
  grantCurrentUser(form, HiveHandle::ClassesRoot, key);
  if (form.GrantKeyStatus == 1 || lowerCase(value) == "installdir") {
    return;
  }
  const std::string folder = withoutQuotes(betweenQuotes(value));
  if (!contains(folder, "\\")) {
    return;
  }
  const std::string path = resolvedPath(form, folder);
  if (!FileExists(form, path) && !FolderExists(form, path)) {
    add(form, "71", path, versionKey);
  }
}

void testLibraryReference(Form42& form, const std::string& name) {
  const std::string key = "CLSID\\" + name + "\\TypeLib";
  const std::string value = defaultValueOf(HiveHandle::ClassesRoot, key);
  showKey(form, key);
  grantCurrentUser(form, HiveHandle::ClassesRoot, key);
  if (value.empty() || value.front() != '{' || form.GrantKeyStatus != 0) {
    return;
  }
  if (!RegKeyExists(HiveHandle::ClassesRoot, "CLSID\\" + value) &&
      !RegKeyExists(HiveHandle::ClassesRoot, "TypeLib\\" + value)) {
    add(form, "72", value, key);
  }
}

}  // namespace

void cln71(Form42& form) {
  form.List1.clear();
  showCaption(form, categoryRow);
  fEnumKey(form, HiveHandle::ClassesRoot, scannedKeys::typeLibraries);
  for (int index = 0; index < form.List1.count(); ++index) {
    const std::string libraryKey = "TypeLib\\" + form.List1.text(index);
    form.List4.clear();
    fEnumKey1(form, HiveHandle::ClassesRoot, libraryKey);
    const std::string versionKey = libraryKey + "\\" + form.List4.text(0);
    showKey(form, versionKey);
    testHelpFolder(form, versionKey);
    form.messages.doEvents();
    if (isStopAsked(form)) {
      break;
    }
  }
}

void cln72(Form42& form) {
  showCaption(form, categoryRow);
  for (int index = 0; index < form.List1.count(); ++index) {
    testLibraryReference(form, form.List1.text(index));
    form.messages.doEvents();
    if (isStopAsked(form)) {
      break;
    }
  }
}

}  // namespace zelvreg
