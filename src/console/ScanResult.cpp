#include "console/ScanResult.h"

#include <algorithm>

#include "evidence/FindingOwner.h"
#include "evidence/KindLooks.h"
#include "evidence/Reasons.h"
#include "evidence/RowEvidence.h"
#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "text/CsvField.h"

namespace zelvreg::console {
namespace {

CategoryResult categoryOf(const Form42& form, std::size_t row) {
  return {.row = row,
          .key = std::string(categoryAt(row).valueName),
          .name = form.View1.text(row, 0),
          .isChecked = form.View1.isChecked(row),
          .problems = form.View1.text(row, problemsColumn),
          .status = form.View1.text(row, statusColumn)};
}

std::string_view categoryKeyOf(const Form42& form, std::size_t row) {
  const KindRule* rule = kindRule(form, row);
  return rule == nullptr ? std::string_view() : categoryAt(rule->category).valueName;
}

FindingResult findingOf(const Form42& form, std::size_t row) {
  const auto cell = [&](std::size_t column) { return form.View2.text(row, column); };
  return {.location = cell(locationColumn),
          .badValue = cell(badValueColumn),
          .kindCode = cell(kindCodeColumn),
          .rootName = cell(rootNameColumn),
          .subKey = cell(subKeyColumn),
          .iconKey = form.View2.smallIcon(row),
          .isChecked = form.View2.isChecked(row),
          .evidence = evidenceAt(form, row),
          .category = std::string(categoryKeyOf(form, row))};
}

// The key of whose finding each row is. The first of the users is the current one, but where they
// are scanned one after the other.
std::vector<std::string> ownerKeys(const Form42& form, const std::vector<ComputerUser>& users) {
  std::vector<std::string> keys;
  if (form.userScope) {
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      keys.push_back(evidenceAt(form, row).isUsers ? form.userScope->currentUser : std::string());
    }
    return keys;
  }
  for (const ComputerUser& user : users) {
    keys.push_back(user.key);
  }
  return ownersOfRows(form, keys.front(), keys);
}

// All that was tested, in one field.
std::string testedText(const Evidence& evidence) {
  std::string text;
  for (const std::string& place : evidence.tested) {
    text.append(text.empty() ? "" : " | ").append(place);
  }
  return text;
}

}  // namespace

std::vector<FindingResult> findingsOf(const Form42& form, const std::vector<ComputerUser>& users) {
  std::vector<FindingResult> findings;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    findings.push_back(findingOf(form, row));
  }
  if (users.empty()) {
    return findings;
  }
  const std::vector<std::string> keys = ownerKeys(form, users);
  for (std::size_t index = 0; index < findings.size(); ++index) {
    const auto owner = std::ranges::find(users, keys[index], &ComputerUser::key);
    if (owner != users.end()) {
      findings[index].user = owner->name;
      findings[index].sid = owner->sid;
    }
  }
  return findings;
}

ScanResult scanResultOf(const Form42& form, const Computer& computer,
                        const std::vector<ComputerUser>& users) {
  ScanResult result;
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    result.categories.push_back(categoryOf(form, row));
  }
  result.findings = findingsOf(form, users);
  result.implausible = form.implausible;
  result.hives = computer.hives();
  return result;
}

std::string csvText(const ScanResult& result) {
  std::string text =
      "location,badValue,kindCode,rootName,subKey,iconKey,checked,confidence,reasons,tested";
  text += result.tellsUsers ? ",user,sid\n" : "\n";
  for (const FindingResult& finding : result.findings) {
    for (const std::string* field : {&finding.location, &finding.badValue, &finding.kindCode,
                                     &finding.rootName, &finding.subKey, &finding.iconKey}) {
      text += csvField(*field) + ",";
    }
    text += finding.isChecked ? "true," : "false,";
    text.append(codeOf(finding.evidence.confidence)).append(",");
    text.append(reasonCodes(finding.evidence)).append(",");
    text.append(csvField(testedText(finding.evidence)));
    if (result.tellsUsers) {
      text.append(",").append(csvField(finding.user)).append(",").append(finding.sid);
    }
    text.append("\n");
  }
  return text;
}

}  // namespace zelvreg::console
