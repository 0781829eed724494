#include "scanners/RecentLists.h"

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

constexpr std::size_t categoryRow = 15;

void addValue(Form42& form, ScannerRun& run, const std::string& key, std::string_view valueName) {
  if (!valueName.empty()) {
    addFinding(form, run,
               {.location = "Users MRU lists",
                .badValue = valueName,
                .kindCode = "155",
                .rootName = longName(HiveHandle::CurrentUser),
                .subKey = key,
                .iconKey = categoryAt(categoryRow).icon});
  }
}

void walkValues(Form42& form, ScannerRun& run, const std::string& key) {
  form.List7.clear();
  fEnumValue4(form, HiveHandle::CurrentUser, key);
  walkEntries(form, form.List7, LastTurn::TheLast, [&](int /*index*/, const std::string& entry) {
    addValue(form, run, key, trim(entry));
    showFound(form, categoryRow, run);
  });
}

// Only the first level of subkeys is walked.
void walkList(Form42& form, ScannerRun& run, const std::string& key) {
  walkValues(form, run, key);
  form.List1.clear();
  fEnumKey(form, HiveHandle::CurrentUser, key);
  for (int index = 0; index < form.List1.count(); ++index) {
    walkValues(form, run, key + "\\" + form.List1.text(index));
    if (isStopAsked(form)) {
      return;
    }
  }
}

}  // namespace

void MRUhist(Form42& form) {
  showCaption(form, categoryRow);
  form.ntSpelling = 0;
  form.List1.clear();
  form.List2.clear();
  ScannerRun run{.row = nextRow(form)};
  for (const char* key : scannedKeys::recentLists) {
    walkList(form, run, key);
  }
  storeRowCount(form);
}

}  // namespace zelvreg
