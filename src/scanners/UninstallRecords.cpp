#include "scanners/UninstallRecords.h"

#include "form/Form42.h"
#include "registry/Hives.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/ScannedKeys.h"
#include "scanners/References.h"
#include "scanners/WorkList.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 13;

enum class Reader { Provider, Direct };

// The records' paths have two spellings: one is enumerated, the other is read and reported.
struct Walk {
  HiveHandle root;
  const char* enumeratedKey;
  const char* ntKey;      // also enumerated under the spelling "Windows nt", or null
  const char* granted;    // null without a grant
  const char* listed;     // its values are listed
  const char* rootKey;    // read and reported
  Reader defaultValueBy;  // of a record without named values
  TotalIsSaved total;
};

constexpr Walk machineWalk{
    .root = HiveHandle::LocalMachine,
    .enumeratedKey = scannedKeys::uninstall,
    .ntKey = scannedKeys::uninstallNt,
    .granted = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\",
    .listed = "Software\\Microsoft\\windows\\currentversion\\Uninstall\\",
    .rootKey = "Software\\Microsoft\\windows\\currentversion\\Uninstall\\",
    .defaultValueBy = Reader::Provider,
    .total = TotalIsSaved::AtTheEnd,
};
constexpr Walk userWalk{
    .root = HiveHandle::CurrentUser,
    .enumeratedKey = scannedKeys::uninstall,
    .ntKey = nullptr,
    .granted = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\",
    .listed = "Software\\Microsoft\\windows\\CurrentVersion\\Uninstall\\",
    .rootKey = "Software\\Microsoft\\windows\\currentversion\\Uninstall\\",
    .defaultValueBy = Reader::Direct,
    .total = TotalIsSaved::AtTheEnd,
};
constexpr Walk wow64Walk{
    .root = HiveHandle::LocalMachine,
    .enumeratedKey = scannedKeys::uninstall32,
    .ntKey = scannedKeys::uninstall32Nt,
    .granted = nullptr,
    .listed = "Software\\Wow6432Node\\Microsoft\\windows\\CurrentVersion\\Uninstall\\",
    .rootKey = "Software\\Wow6432Node\\Microsoft\\windows\\currentversion\\Uninstall\\",
    .defaultValueBy = Reader::Provider,
    .total = TotalIsSaved::AtEachFinding,
};

// Keys that name the system's folder. If they do not, keys are spelled "Windows nt" here.
constexpr const char* nativeProbe = "software\\microsoft\\windows\\currentversion";
constexpr const char* wow64Probe = "software\\Wow6432Node\\microsoft\\windows\\currentversion";

void begin(Form42& form, const char* probe) {
  showCaption(form, categoryRow);
  std::string systemRoot;
  GetRegString(HiveHandle::LocalMachine, probe, "SystemRoot", systemRoot);
  form.ntSpelling = trim(systemRoot).empty() ? 2 : 0;
}

void add(Form42& form, ScannerRun& run, const Walk& walk, const std::string& keyName,
         const std::string& badValue, const char* kindCode) {
  form.List2.add(keyName);
  addRow(form, run,
         {.location = englishOf(categoryAt(categoryRow).caption),
          .badValue = badValue,
          .kindCode = kindCode,
          .rootName = longName(walk.root),
          .subKey = walk.rootKey + keyName,
          .iconKey = categoryAt(categoryRow).icon});
  countInTotal(form, walk.total);
}

std::string readDefaultValue(Form42& form, const Walk& walk, const std::string& key) {
  if (walk.defaultValueBy == Reader::Provider) {
    return GetKeyValue64(form, walk.root, key, "");
  }
  std::string value;
  GetRegString(walk.root, key, "", value);
  return value;
}

void testRecord(Form42& form, ScannerRun& run, const Walk& walk, const std::string& keyName) {
  if (walk.granted != nullptr) {
    grantCurrentUser(form, walk.root, walk.granted + keyName);
  }
  form.List7.clear();
  fEnumValue4(form, walk.root, walk.listed + keyName);
  const std::string rootKey = walk.rootKey + keyName;
  if (form.List7.count() == 0 && trim(readDefaultValue(form, walk, rootKey)).empty()) {
    add(form, run, walk, keyName, keyName, "133");
  }
  for (int index = 0; index < form.List7.count(); ++index) {
    const std::string name = form.List7.text(index);
    if (namesMissingPath(form, GetKeyValue64(form, walk.root, rootKey, name))) {
      add(form, run, walk, keyName, name, "135");
    }
    if (isStopAsked(form)) {
      return;
    }
  }
}

void scanRecords(Form42& form, ScannerRun& run, const Walk& walk) {
  form.List1.clear();
  form.List2.clear();
  fEnumKey(form, walk.root, walk.enumeratedKey);
  if (walk.ntKey != nullptr && form.ntSpelling == 2) {
    fEnumKey(form, walk.root, walk.ntKey);
  }
  walkEntries(form, form.List1, LastTurn::TheLast, [&](int /*index*/, const std::string& entry) {
    testRecord(form, run, walk, std::string(trim(entry)));
    showFound(form, categoryRow, run);
  });
  showNothingFound(form, categoryRow, run);
}

}  // namespace

void uninstall(Form42& form) {
  begin(form, nativeProbe);
  ScannerRun run{.row = nextRow(form)};
  scanRecords(form, run, machineWalk);
  scanRecords(form, run, userWalk);
  saveTotalFound(form);
  storeRowCount(form);
}

void uninstall32(Form42& form) {
  begin(form, wow64Probe);
  ScannerRun run{.row = nextRow(form)};
  scanRecords(form, run, wow64Walk);
  storeRowCount(form);
}

}  // namespace zelvreg
