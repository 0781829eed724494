#include "scanners/StartupPrograms.h"

#include "form/Form42.h"
#include "registry/View64.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/WorkList.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 14;

struct RunKey {
  HiveHandle root;
  const char* listedKey;
  const char* subKey;  // read and reported
};
constexpr const char* listedRun = "Software\\Microsoft\\windows\\CurrentVersion\\Run";
constexpr const char* listedRun32 =
    "Software\\Wow6432Node\\Microsoft\\windows\\CurrentVersion\\Run";
constexpr RunKey runKeys[] = {
    {HiveHandle::LocalMachine, listedRun, scannedKeys::run},
    {HiveHandle::LocalMachine, listedRun32, scannedKeys::run32},
    {HiveHandle::CurrentUser, listedRun, scannedKeys::run},
    {HiveHandle::CurrentUser, listedRun32, scannedKeys::run32},
};

void testProgram(Form42& form, ScannerRun& run, const RunKey& key, const std::string& keyName) {
  if (keyName.empty()) {
    return;
  }
  std::string command = GetKeyValue64(form, key.root, key.subKey, keyName);
  if (!FileExists(form, FilePath(command))) {
    addFinding(form, run,
               {.location = englishOf(categoryAt(categoryRow).caption),
                .badValue = keyName,
                .kindCode = "144",
                .rootName = longName(key.root),
                .subKey = key.subKey,
                .iconKey = categoryAt(categoryRow).icon});
  }
}

void scanRunKey(Form42& form, ScannerRun& run, const RunKey& key) {
  form.List7.clear();
  fEnumValue4(form, key.root, key.listedKey);
  walkEntries(form, form.List7, LastTurn::TheLast, [&](int /*index*/, const std::string& entry) {
    testProgram(form, run, key, std::string(trim(entry)));
    showFound(form, categoryRow, run);
  });
}

}  // namespace

void runMRU(Form42& form) {
  showCaption(form, categoryRow);
  form.ntSpelling = 0;
  form.List1.clear();
  form.List2.clear();
  ScannerRun run{.row = nextRow(form)};
  for (const RunKey& key : runKeys) {
    scanRunKey(form, run, key);
  }
  showNothingFound(form, categoryRow, run);
  storeRowCount(form);
}

}  // namespace zelvreg
