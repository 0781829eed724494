#include "scanners/MuiCache.h"

#include "form/Form42.h"
#include "registry/View64.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/References.h"
#include "scanners/WorkList.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 16;

void testName(Form42& form, ScannerRun& run, const std::string& entry) {
  const std::string valueName(trim(entry));
  if (!contains(valueName, ":\\") || FileExists(form, resolvedPath(form, valueName))) {
    return;
  }
  form.List2.add(valueName);
  addRow(form, run,
         {.location = englishOf(categoryAt(categoryRow).caption),
          .badValue = entry,
          .kindCode = "166",
          .rootName = longName(HiveHandle::CurrentUser),
          .subKey = scannedKeys::muiCache,
          .iconKey = categoryAt(categoryRow).icon});
  countInTotal(form);
}

}  // namespace

void MuiCache(Form42& form) {
  showCaption(form, categoryRow);
  form.ntSpelling = 0;
  form.List1.clear();
  form.List2.clear();
  form.List7.clear();
  ScannerRun run{.row = nextRow(form)};
  fEnumValue4(form, HiveHandle::CurrentUser, scannedKeys::muiCache);
  walkEntries(form, form.List7, LastTurn::TheLast, [&](int /*index*/, const std::string& entry) {
    testName(form, run, entry);
    showFound(form, categoryRow, run);
  });
  showNothingFound(form, categoryRow, run);
  storeRowCount(form);
}

}  // namespace zelvreg
