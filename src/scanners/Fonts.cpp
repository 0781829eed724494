#include "scanners/Fonts.h"

#include "form/Form42.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 1;
// Findings have the text without "nt", although the values are under it. The repair deletes the
// value under both.
constexpr const char* reportedKey = "Software\\Microsoft\\windows\\currentversion\\fonts";

std::string readSystemRoot(Form42& form) {
  std::string root = GetKeyValue64(form, HiveHandle::LocalMachine,
                                   "software\\microsoft\\windows\\currentversion", "SystemRoot");
  if (!trim(root).empty()) {
    return root;
  }
  return GetKeyValue64(form, HiveHandle::LocalMachine,
                       "software\\microsoft\\windows nt\\currentversion", "SystemRoot");
}

void testFont(Form42& form, ScannerRun& run, const std::string& systemRoot,
              const std::string& name) {
  const std::string data = GetKeyValue64(form, HiveHandle::LocalMachine, scannedKeys::fonts, name);
  if (name.empty()) {
    return;
  }
  form.Label3.caption = data;
  // The data is not looked at. A full path is added to the folder, does not exist, and is reported.
  if (!FileExists(form, systemRoot + "\\fonts\\" + data)) {
    addFinding(form, run,
               {.location = name,
                .badValue = data,
                .kindCode = "1",
                .rootName = longName(HiveHandle::LocalMachine),
                .subKey = reportedKey,
                .iconKey = categoryAt(categoryRow).icon});
  }
}

}  // namespace

void Command1(Form42& form) {
  showCaption(form, categoryRow);
  ScannerRun run{.row = 1, .total = TotalIsSaved::AtTheEnd};
  const std::string systemRoot = readSystemRoot(form);
  form.List1.clear();
  form.List2.clear();
  fEnumValue(form, HiveHandle::LocalMachine, scannedKeys::fonts);
  int index = 0;
  do {
    form.messages.doEvents();
    form.isProviderSilent = false;
    testFont(form, run, systemRoot, std::string(trim(form.List1.text(index))));
    ++index;
    showFound(form, categoryRow, run);
  } while (!isStopAsked(form) && index < form.List1.count());
  saveTotalFound(form);
  showNothingFound(form, categoryRow, run);
  storeRowCount(form);
}

}  // namespace zelvreg
