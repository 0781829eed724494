#include "scanners/FirewallRules.h"

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

constexpr std::size_t categoryRow = 11;
constexpr CellStyle countStyle{.isBold = true, .color = 192};

void testRule(Form42& form, ScannerRun& run, const std::string& ruleName) {
  const std::string ruleText =
      GetKeyValue64(form, HiveHandle::LocalMachine, scannedKeys::firewallRules, ruleName);
  std::string rule = ruleText;
  pth(form, rule);
  if (trim(form.FirewallPath).empty() || FileExists(form, resolvedPath(form, form.FirewallPath))) {
    return;
  }
  addFinding(form, run,
             {.location = ruleText,
              .badValue = ruleName,
              .kindCode = "11",
              .rootName = longName(HiveHandle::LocalMachine),
              .subKey = scannedKeys::firewallRules,
              .iconKey = categoryAt(categoryRow).icon});
}

}  // namespace

void Command32(Form42& form) {
  showCaption(form, categoryRow);
  form.FirewallPath.clear();
  form.List1.clear();
  form.List2.clear();
  fEnumValue(form, HiveHandle::LocalMachine, scannedKeys::firewallRules);
  ScannerRun run{.row = nextRow(form)};
  walkEntries(form, form.List1, LastTurn::TheLast, [&](int /*index*/, const std::string& entry) {
    testRule(form, run, std::string(trim(entry)));
    showFound(form, categoryRow, run);
  });
  form.View1.setCellStyle(categoryRow, problemsColumn, countStyle);
  showNothingFound(form, categoryRow, run);
  storeRowCount(form);
}

}  // namespace zelvreg
