#include "scanners/SharedDlls.h"

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

constexpr std::size_t categoryRow = 2;

// One pass for each view: the key is both walked and reported.
constexpr const char* passes[] = {
    scannedKeys::sharedDlls,
    scannedKeys::sharedDlls32,
};

void testDll(Form42& form, ScannerRun& run, const std::string& name, std::string_view key) {
  // As a scan always does: no shared DLL stays read-only, hidden or system.
  setArchiveOnly(form, name);
  std::string path = name;
  if (!FileExists(form, GetPath(form, path))) {
    addFinding(form, run,
               {.location = name,
                .badValue = name,
                .kindCode = "2",
                .rootName = "HKEY_LOCAL_MACHINE",
                .subKey = key,
                .iconKey = "b"});
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
  form.Label4.caption = "Invalid Shared Dll's";
  form.List1.clear();
  form.List2.clear();
  ScannerRun run{.fields = FieldsGoTo::NumberedRow};
  for (const char* key : passes) {
    std::string values;
    LONG rc = 0;
    fEnumValue(form, "HKLM", key, values, rc);
    // The row starts over in the second pass, while its locations are appended.
    run.row = nextRow(form);
    testList(form, run, key);
  }
  storeRowCount(form);
}

}  // namespace zelvreg
