#include "scanners/ServerFiles.h"

#include "form/Form42.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "roots/UserKeys.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/References.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

constexpr const char* serverKey = "\\InprocServer32";

struct Place {
  std::size_t categoryRow;
  HiveHandle root;
  const char* kindCode;
};

constexpr Place classesRoot{7, HiveHandle::ClassesRoot, "8"};
constexpr Place currentUser{8, HiveHandle::CurrentUser, "11"};
constexpr Place users{9, HiveHandle::Users, "12"};
constexpr Place machine{10, HiveHandle::LocalMachine, "13"};

void add(Form42& form, const Place& place, const std::string& path, const std::string& key) {
  ScannerRun run;
  addRow(form, run,
         {.location = path,
          .badValue = "",
          .kindCode = place.kindCode,
          .rootName = longName(place.root),
          .subKey = key,
          .iconKey = categoryAt(place.categoryRow).icon});
  countInTotal(form);
  ++form.categoryFound;
  showProblems(form, place.categoryRow, form.categoryFound);
}

bool isFolderPath(const std::string& text) { return contains(text, "\\"); }

std::string serverFile(const Form42& form, const std::string& value) {
  return resolvedPath(form, withoutQuotes(betweenQuotes(value)));
}

void judge(Form42& form, const Place& place, const std::string& value, const std::string& key) {
  // An argument after the file is not cut off, so such a server counts as missing.
  const std::string path = serverFile(form, value);
  if (!FileExists(form, path)) {
    add(form, place, path, key);
  }
}

void showKey(Form42& form, const Place& place, const std::string& key) {
  form.Label3.caption = keyPath(place.root, key);
}

void testServer(Form42& form, const Place& place, const std::string& key) {
  const std::string value = GetKeyValue64(form, place.root, key, "");
  showKey(form, place, key);
  if (isFolderPath(value)) {
    judge(form, place, value, key);
  }
}

// The classes root is read directly, before the user is given access.
void testMergedServer(Form42& form, const Place& place, const std::string& key) {
  const std::string value = defaultValueOf(HiveHandle::ClassesRoot, key);
  showKey(form, place, key);
  grantCurrentUser(form, HiveHandle::ClassesRoot, key);
  if (form.GrantKeyStatus == 0 && isFolderPath(withoutQuotes(betweenQuotes(value)))) {
    judge(form, place, value, key);
  }
}

using TestServer = void (*)(Form42& form, const Place& place, const std::string& key);

void scanClasses(Form42& form, const Place& place, const std::string& classesKey, TestServer test) {
  form.List1.clear();
  fEnumKey(form, place.root, classesKey);
  const std::string start = classesKey + "\\";
  std::string key;
  for (int index = 0; index < form.List1.count(); ++index) {
    form.isProviderSilent = false;
    key = start;
    key += form.List1.text(index);
    key += serverKey;
    test(form, place, key);
    form.messages.doEvents();
    if (isStopAsked(form)) {
      return;
    }
  }
}

void begin(Form42& form, const Place& place) {
  showCaption(form, place.categoryRow);
  showProblems(form, place.categoryRow, 0);
}

// The first key of the users that holds classes; empty if there is none. Users who are scanned one
// after the other have their own each.
std::string classesHive(Form42& form) {
  if (form.userScope) {
    return form.userScope->currentUser + utf8(userClassesSuffix);
  }
  form.List1.clear();
  fEnumKey(form, users.root, "");
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
  showCaption(form, classesRoot.categoryRow);
  scanClasses(form, classesRoot, scannedKeys::classIds, testMergedServer);
}

void cln8(Form42& form) {
  begin(form, currentUser);
  scanClasses(form, currentUser, scannedKeys::machineClassIds, testServer);
}

void cln9(Form42& form) {
  begin(form, users);
  scanClasses(form, users, classesHive(form) + "\\CLSID", testServer);
}

void cln10(Form42& form) {
  begin(form, machine);
  scanClasses(form, machine, scannedKeys::machineClassIds, testServer);
}

}  // namespace zelvreg
