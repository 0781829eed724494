#include "scanners/TypeLibraries.h"

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

constexpr std::size_t categoryRow = 7;
constexpr const char* caption = "Invalid ClassId Configuration";

void add(Form42& form, const char* kindCode, const std::string& location,
         const std::string& subKey) {
  ScannerRun run;
  addRow(form, run,
         {.location = location,
          .badValue = "Default",
          .kindCode = kindCode,
          .rootName = "HKEY_CLASSES_ROOT",
          .subKey = subKey,
          .iconKey = "g"});
  countInTotal(form);
  ++form.categoryFound;
  showProblems(form, categoryRow, form.categoryFound);
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
  form.Label3.caption = "HKEY_CLASSES_ROOT\\" + key;
  grantCurrentUser(form, HiveHandle::ClassesRoot, key);
  if (value.empty() || value.front() != '{' || form.GrantKeyStatus != 0) {
    return;
  }
  if (!RegKeyExists(HiveHandle::ClassesRoot, "CLSID\\" + value) &&
      !RegKeyExists(HiveHandle::ClassesRoot, "TypeLib\\" + value)) {
    add(form, "72", value, key);
  }
}

std::string firstNumericEntry(const ListBox& list) {
  for (int index = 0; index < list.count(); ++index) {
    const std::string_view entry = trim(list.text(index));
    if (wholeNumber(entry).has_value()) {
      return std::string(entry);
    }
  }
  return {};
}

// The path of the key of a library's 32-bit file. Every part may be empty.
std::string libraryFileKey(Form42& form, const std::string& guid) {
  std::string names;
  LONG rc = 0;
  fEnumKey(form, "HKCR", "typelib\\" + guid, names, rc);
  const std::string version = firstNumericEntry(form.List1);
  fEnumKey1(form, "HKCR", "typelib\\" + guid + "\\" + version, names, rc);
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
          .rootName = "HKEY_CLASSES_ROOT",
          .subKey = key,
          .iconKey = "g"});
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

void cln71(Form42& form) {
  std::string names;
  LONG rc = 0;
  form.List1.clear();
  form.Label4.caption = caption;
  fEnumKey(form, "HKCR", scannedKeys::typeLibraries, names, rc);
  for (int index = 0; index < form.List1.count(); ++index) {
    const std::string libraryKey = "TypeLib\\" + form.List1.text(index);
    form.List4.clear();
    fEnumKey1(form, "HKCR", libraryKey, names, rc);
    const std::string versionKey = libraryKey + "\\" + form.List4.text(0);
    form.Label3.caption = "HKEY_CLASSES_ROOT\\" + versionKey;
    testHelpFolder(form, versionKey);
    form.messages.doEvents();
    if (isStopAsked(form)) {
      break;
    }
  }
}

void cln72(Form42& form) {
  form.Label4.caption = caption;
  for (int index = 0; index < form.List1.count(); ++index) {
    testLibraryReference(form, form.List1.text(index));
    form.messages.doEvents();
    if (isStopAsked(form)) {
      break;
    }
  }
}

void Command16(Form42& form) {
  ScannerRun run{.row = nextRow(form)};
  form.List1.clear();
  form.List2.clear();
  form.List3.clear();
  form.List4.clear();
  std::string names;
  LONG rc = 0;
  fEnumKey(form, "HKCR", "typelib", names, rc);
  moveToList3(form);
  walkEntries(form, form.List3, LastTurn::TheLast, [&](int /*index*/, const std::string& guid) {
    testLibraryFile(form, run, libraryFileKey(form, guid));
    form.List1.clear();
  });
  storeRowCount(form);
}

}  // namespace zelvreg
