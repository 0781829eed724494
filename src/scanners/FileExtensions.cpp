#include "scanners/FileExtensions.h"

#include "form/Form42.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "scan/Findings.h"
#include "scan/ScannedKeys.h"
#include "scanners/WorkList.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 12;

void listExtensions(Form42& form) {
  std::string names;
  LONG rc = 0;
  form.List1.clear();
  form.List2.clear();
  fEnumKey(form, "HKcu", scannedKeys::fileExtensions, names, rc);
  if (rc == ERROR_FILE_NOT_FOUND) {
    fEnumKey(form, "HKcu", scannedKeys::fileExtensionsNt, names, rc);
  }
}

void testExtension(Form42& form, ScannerRun& run, const std::string& name) {
  if (name.size() < 2 || name.front() != '.') {
    return;
  }
  std::string values;
  LONG rc = 0;
  form.List7.clear();
  fEnumValue4(form, "HKcu",
              "Software\\Microsoft\\windows\\CurrentVersion\\Explorer\\FileExts\\" + name +
                  "\\OpenWithProgids",
              values, rc);
  if (form.List7.count() > 0) {
    return;
  }
  addFinding(form, run,
             {.location = "Bad File Reference",
              .badValue = name,
              .kindCode = "122",
              .rootName = "HKEY_CURRENT_USER",
              .subKey = "Software\\Microsoft\\windows\\currentversion\\Explorer\\FileExts\\" +
                        name + "\\OpenWithProgids",
              .iconKey = "m"});
}

}  // namespace

void fileext(Form42& form) {
  form.Label4.caption = "Invalid File Extensions";
  ScannerRun run{.row = nextRow(form)};
  listExtensions(form);
  walkEntries(form, form.List1, LastTurn::TheLast, [&](int /*index*/, const std::string& entry) {
    testExtension(form, run, std::string(trim(entry)));
    showFound(form, categoryRow, run);
  });
  showNothingFound(form, categoryRow, run);
  storeRowCount(form);
}

}  // namespace zelvreg
