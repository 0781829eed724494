#include "scanners/FileExtensions.h"

#include "form/Form42.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/ScannedKeys.h"
#include "scanners/WorkList.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 12;

void listExtensions(Form42& form) {
  form.List1.clear();
  form.List2.clear();
  const LONG status = fEnumKey(form, HiveHandle::CurrentUser, scannedKeys::fileExtensions).rc;
  if (status == ERROR_FILE_NOT_FOUND) {
    fEnumKey(form, HiveHandle::CurrentUser, scannedKeys::fileExtensionsNt);
  }
}

void testExtension(Form42& form, ScannerRun& run, const std::string& name) {
  if (name.size() < 2 || name.front() != '.') {
    return;
  }
  form.List7.clear();
  fEnumValue4(form, HiveHandle::CurrentUser,
              "Software\\Microsoft\\windows\\CurrentVersion\\Explorer\\FileExts\\" + name +
                  "\\OpenWithProgids");
  if (form.List7.count() > 0) {
    return;
  }
  addFinding(form, run,
             {.location = "Bad File Reference",
              .badValue = name,
              .kindCode = "122",
              .rootName = longName(HiveHandle::CurrentUser),
              .subKey = "Software\\Microsoft\\windows\\currentversion\\Explorer\\FileExts\\" +
                        name + "\\OpenWithProgids",
              .iconKey = categoryAt(categoryRow).icon});
}

}  // namespace

void fileext(Form42& form) {
  showCaption(form, categoryRow);
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
