#include "scanners/ServerFiles.h"

#include "form/Form42.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/References.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr const char* serverKey = "\\InprocServer32";

struct Place {
  std::size_t categoryRow;
  const char* caption;
  const char* hive;
  const char* rootName;
  const char* kindCode;
  const char* iconKey;
};

constexpr Place classesRoot{7,  "Invalid ClassId Configuration", "HKCR", "HKEY_CLASSES_ROOT", "8",
                            "g"};
constexpr Place currentUser{8, "Current user settings", "HKCU", "HKEY_CURRENT_USER", "11", "h"};
constexpr Place users{9, "Global user settings", "HKU", "HKEY_USERS", "12", "i"};
constexpr Place machine{10, "Computer settings", "HKLM", "HKEY_LOCAL_MACHINE", "13", "j"};

void add(Form42& form, const Place& place, const std::string& path, const std::string& key) {
  ScannerRun run;
  addRow(form, run,
         {.location = path,
          .badValue = "",
          .kindCode = place.kindCode,
          .rootName = place.rootName,
          .subKey = key,
          .iconKey = place.iconKey});
  countInTotal(form);
  ++form.categoryFound;
  showProblems(form, place.categoryRow, form.categoryFound);
}

bool isFolderPath(const std::string& text) { return contains(text, "\\"); }

std::string serverFile(const Form42& form, const std::string& value) {
  return resolvedPath(form, withoutQuotes(betweenQuotes(value)));
}

void judge(Form42& form, const Place& place, const std::string& value, const std::string& key) {
  // An argument after the file is not cut off, so that such a server counts as gone.
  const std::string path = serverFile(form, value);
  if (!FileExists(form, path)) {
    add(form, place, path, key);
  }
}

void testServer(Form42& form, const Place& place, const std::string& key) {
  const std::string value = GetKeyValue64(form, place.hive, key, "");
  form.Label3.caption = std::string(place.rootName) + "\\" + key;
  if (isFolderPath(value)) {
    judge(form, place, value, key);
  }
}

// The classes root is read directly, after which the user is let in.
void testMergedServer(Form42& form, const Place& place, const std::string& key) {
  const std::string value = defaultValueOf(HiveHandle::ClassesRoot, key);
  form.Label3.caption = std::string(place.rootName) + "\\" + key;
  grantCurrentUser(form, HiveHandle::ClassesRoot, key);
  if (form.GrantKeyStatus == 0 && isFolderPath(withoutQuotes(betweenQuotes(value)))) {
    judge(form, place, value, key);
  }
}

using TestServer = void (*)(Form42& form, const Place& place, const std::string& key);

void scanClasses(Form42& form, const Place& place, const std::string& classesKey, TestServer test) {
  std::string names;
  LONG rc = 0;
  form.List1.clear();
  fEnumKey(form, place.hive, classesKey, names, rc);
  for (int index = 0; index < form.List1.count(); ++index) {
    form.isProviderSilent = false;
    const std::string name = form.List1.text(index);
    test(form, place, classesKey + "\\" + name + serverKey);
    form.messages.doEvents();
    if (isStopAsked(form)) {
      return;
    }
  }
}

void begin(Form42& form, const Place& place) {
  form.Label4.caption = place.caption;
  showProblems(form, place.categoryRow, 0);
}

// The first key of the users that holds classes; empty when there is none.
std::string firstClassesHive(Form42& form) {
  std::string names;
  LONG rc = 0;
  form.List1.clear();
  fEnumKey(form, users.hive, "", names, rc);
  for (int index = 0; index < form.List1.count(); ++index) {
    if (containsIgnoringCase(form.List1.text(index), "_classes")) {
      return form.List1.text(index);
    }
  }
  return {};
}

}  // namespace

void cln7(Form42& form) {
  form.List1.clear();
  form.Label4.caption = classesRoot.caption;
  scanClasses(form, classesRoot, scannedKeys::classIds, testMergedServer);
}

void cln8(Form42& form) {
  begin(form, currentUser);
  scanClasses(form, currentUser, scannedKeys::machineClassIds, testServer);
}

void cln9(Form42& form) {
  begin(form, users);
  scanClasses(form, users, firstClassesHive(form) + "\\CLSID", testServer);
}

void cln10(Form42& form) {
  begin(form, machine);
  scanClasses(form, machine, scannedKeys::machineClassIds, testServer);
}

}  // namespace zelvreg
