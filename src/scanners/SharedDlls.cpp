#include "scanners/SharedDlls.h"

#include "form/Form42.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/References.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 2;

// One pass for each view: the key is both walked and reported.
constexpr const char* passes[] = {
    scannedKeys::sharedDlls,
    scannedKeys::sharedDlls32,
};

void testDll(Form42& form, ScannerRun& run, const std::string& name, std::string_view key) {
  // After a scan no shared DLL is read-only, hidden or a system file.
  setArchiveOnly(form, name);
  std::string path = name;
  if (!FileExists(form, GetPath(form, path))) {
    addFinding(form, run,
               {.location = name,
                .badValue = name,
                .kindCode = "2",
                .rootName = longName(HiveHandle::LocalMachine),
                .subKey = key,
                .iconKey = categoryAt(categoryRow).icon});
  }
}

void testList(Form42& form, ScannerRun& run, std::string_view key) {
  int index = 0;
  do {
    form.messages.doEvents();
    const std::string name(trim(form.List1.text(index)));
    if (!name.empty()) {
      testDll(form, run, name, key);
    }
    ++index;
    showProblems(form, categoryRow, run.found);
  } while (!isStopAsked(form) && index < form.List1.count());
}

}  // namespace

void Command2(Form42& form) {
  showCaption(form, categoryRow);
  form.List1.clear();
  form.List2.clear();
  ScannerRun run{.fields = FieldsGoTo::NumberedRow};
  for (const char* key : passes) {
    fEnumValue(form, HiveHandle::LocalMachine, key);
    // The second pass counts from the same row, while its locations are appended.
    run.row = nextRow(form);
    testList(form, run, key);
  }
  storeRowCount(form);
}

}  // namespace zelvreg
