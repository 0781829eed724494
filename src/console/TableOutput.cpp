// The tables of ScanResult.h.
#include <string_view>

#include "console/DisplayText.h"
#include "console/ScanResult.h"
#include "console/Table.h"
#include "evidence/Reasons.h"
#include "keys/RootHandles.h"
#include "roots/Roots.h"

namespace zelvreg::console {
namespace {

// A table has no room for the long names of the roots.
std::string keyText(const FindingResult& finding) {
  if (finding.rootName.empty()) {
    return finding.subKey;
  }
  const std::string_view name = shortName(GetHiveHandle(finding.rootName));
  return (name.empty() ? finding.rootName : std::string(name)) + "\\" + finding.subKey;
}

std::string categoryTable(const ScanResult& result, const TableLayout& layout) {
  Table table(
      {{"Row", true}, {"Category", false, true}, {"Key"}, {"Problems", true}, {"Status", false}});
  for (const CategoryResult& category : result.categories) {
    table.addRow({std::to_string(category.row), category.name, category.key, category.problems,
                  category.isChecked ? category.status : "not ticked"});
  }
  return table.text(layout);
}

std::string findingTable(const ScanResult& result, const TableLayout& layout) {
  std::vector<TableColumn> columns{{"No.", true},
                                   {"Kind", true},
                                   {"Sure", false, false, true},
                                   {"Location", false, true},
                                   {"Bad value", false, true},
                                   {"Registry key", false, true}};
  constexpr std::ptrdiff_t userColumn = 3;
  if (result.tellsUsers) {
    columns.insert(columns.begin() + userColumn, {"User"});
  }
  Table table(columns);
  std::size_t number = 0;
  for (const FindingResult& finding : result.findings) {
    std::vector<std::string> cells{
        std::to_string(++number), finding.kindCode, codeOf(finding.evidence.confidence),
        finding.location,         finding.badValue, keyText(finding)};
    if (result.tellsUsers) {
      cells.insert(cells.begin() + userColumn, finding.user);
    }
    table.addRow(cells);
  }
  return table.text(layout);
}

}  // namespace

std::string tableText(const ScanResult& result, const TableLayout& layout) {
  std::string text = categoryTable(result, layout) + "\n";
  if (!result.findings.empty()) {
    text += findingTable(result, layout) + "\n";
  }
  return text + std::to_string(result.findings.size()) +
         (result.findings.size() == 1 ? " problem found.\n" : " problems found.\n");
}

std::string repairText(const RepairResult& repair, std::size_t left) {
  if (!repair.isRehearsal) {
    return std::to_string(repair.repaired) + " repaired, " + std::to_string(repair.leftAlone) +
           " left alone, " + std::to_string(repair.noEffect) + " without effect; " +
           std::to_string(left) + " left in the list.\n";
  }
  std::string text = "\nA repair would take\n";
  for (const std::string& place : repair.takings) {
    text += "  " + printable(place) + "\n";
  }
  text += repair.takings.empty() ? "  nothing\n" : "";
  if (!repair.refused.empty()) {
    text += "and leave alone\n";
  }
  for (const auto& [place, reason] : repair.refused) {
    text += "  " + printable(place) + ": " + printable(reason) + "\n";
  }
  return text + std::to_string(repair.repaired) + " of " + std::to_string(left) +
         " problems would be repaired; nothing was changed.\n";
}

std::string searchTableText(const ScanResult& result, const TableLayout& layout) {
  const auto& findings = result.findings;
  const std::string text = findings.empty() ? "" : findingTable(result, layout) + "\n";
  return text + std::to_string(findings.size()) +
         (findings.size() == 1 ? " entry found.\n" : " entries found.\n");
}

}  // namespace zelvreg::console
