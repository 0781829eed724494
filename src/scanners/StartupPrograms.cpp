#include "scanners/StartupPrograms.h"

#include "form/Form42.h"
#include "registry/View64.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/WorkList.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 14;

struct RunKey {
  const char* listHive;
  const char* readHive;
  const char* listedKey;
  const char* subKey;  // read and reported
  const char* rootName;
};
constexpr RunKey runKeys[] = {
    {"HKLM", "HKLM", "Software\\Microsoft\\windows\\CurrentVersion\\Run", scannedKeys::run,
     "HKEY_LOCAL_MACHINE"},
    {"HKLM", "HKLM", "Software\\Wow6432Node\\Microsoft\\windows\\CurrentVersion\\Run",
     scannedKeys::run32, "HKEY_LOCAL_MACHINE"},
    {"HKcu", "HKCU", "Software\\Microsoft\\windows\\CurrentVersion\\Run", scannedKeys::run,
     "HKEY_CURRENT_USER"},
    {"HKcu", "HKCU", "Software\\Wow6432Node\\Microsoft\\windows\\CurrentVersion\\Run",
     scannedKeys::run32, "HKEY_CURRENT_USER"},
};

void testProgram(Form42& form, ScannerRun& run, const RunKey& key, const std::string& keyName) {
  if (keyName.empty()) {
    return;
  }
  std::string command = GetKeyValue64(form, key.readHive, key.subKey, keyName);
  if (!FileExists(form, FilePath(command))) {
    addFinding(form, run,
               {.location = "Startup programs",
                .badValue = keyName,
                .kindCode = "144",
                .rootName = key.rootName,
                .subKey = key.subKey,
                .iconKey = "ru"});
  }
}

void scanRunKey(Form42& form, ScannerRun& run, const RunKey& key) {
  std::string values;
  LONG rc = 0;
  form.List7.clear();
  fEnumValue4(form, key.listHive, key.listedKey, values, rc);
  walkEntries(form, form.List7, LastTurn::TheLast, [&](int /*index*/, const std::string& entry) {
    testProgram(form, run, key, std::string(trim(entry)));
    showFound(form, categoryRow, run);
  });
}

}  // namespace

void runMRU(Form42& form) {
  form.Label4.caption = "Startup programs";
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
