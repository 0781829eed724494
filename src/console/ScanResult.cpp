#include "console/ScanResult.h"

#include <algorithm>

#include "console/JsonText.h"
#include "evidence/Reasons.h"
#include "evidence/RowEvidence.h"
#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "text/Characters.h"
#include "unicode/Unicode.h"

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

FindingResult findingOf(const Form42& form, std::size_t row,
                        const std::optional<ComputerUser>& user) {
  const auto cell = [&](std::size_t column) { return form.View2.text(row, column); };
  const Evidence& evidence = evidenceAt(form, row);
  return {.location = cell(locationColumn),
          .badValue = cell(badValueColumn),
          .kindCode = cell(kindCodeColumn),
          .rootName = cell(rootNameColumn),
          .subKey = cell(subKeyColumn),
          .iconKey = form.View2.smallIcon(row),
          .isChecked = form.View2.isChecked(row),
          .evidence = evidence,
          .user = user && evidence.isUsers ? user->name : "",
          .sid = user && evidence.isUsers ? user->sid : ""};
}

// A spreadsheet runs what begins like a formula. An apostrophe before it makes it text.
// Some take the wide forms of the signs as well.
bool looksLikeFormula(std::string_view text) {
  return !text.empty() && std::u32string_view(U"=+-@\t\r＝＋－＠").find(characterAt(text, 0)) !=
                              std::u32string_view::npos;
}

// Programs that read the table take plain UTF-8 only.
std::string plainUtf8(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const std::string_view next = text.substr(0, firstCharacter(text).size);
    if (isPlainUtf8(next)) {
      plain += next;
    } else {
      appendCharacter(plain, replacementCharacter);
    }
    text.remove_prefix(next.size());
  }
  return plain;
}

// All that was tested, in one field.
std::string testedText(const Evidence& evidence) {
  std::string text;
  for (const std::string& place : evidence.tested) {
    text.append(text.empty() ? "" : " | ").append(place);
  }
  return text;
}

std::string csvField(const std::string& exactText) {
  std::string text = (looksLikeFormula(exactText) ? "'" : "") + plainUtf8(exactText);
  if (text.find_first_of(",\"\r\n") == std::string::npos) {
    return text;
  }
  std::string quoted = "\"";
  for (const char character : text) {
    quoted.append(character == '"' ? 2 : 1, character);
  }
  return quoted + "\"";
}

using Json = nlohmann::ordered_json;

Json listOf(const TestedPlaces& places) {
  Json list = Json::array();
  for (const std::string& place : places) {
    list.push_back(place);
  }
  return list;
}

Json codesOf(const ReasonList& reasons) {
  Json codes = Json::array();
  for (const Reason reason : reasons) {
    codes.push_back(ruleOf(reason).code);
  }
  return codes;
}

Json listOf(const ScanResult& result) {
  Json list = Json::array();
  for (const FindingResult& finding : result.findings) {
    list.push_back({{"location", finding.location},
                    {"badValue", finding.badValue},
                    {"kindCode", finding.kindCode},
                    {"rootName", finding.rootName},
                    {"subKey", finding.subKey},
                    {"iconKey", finding.iconKey},
                    {"checked", finding.isChecked},
                    {"confidence", codeOf(finding.evidence.confidence)},
                    {"reasons", codesOf(finding.evidence.reasons)},
                    {"tested", listOf(finding.evidence.tested)}});
    if (result.tellsUsers) {
      list.back()["user"] = finding.user;
      list.back()["sid"] = finding.sid;
    }
  }
  return list;
}

// How many findings have each confidence.
Json countsOf(const std::vector<FindingResult>& findings) {
  Json counts;
  for (const Confidence confidence : {Confidence::Sure, Confidence::Likely, Confidence::Unsure}) {
    counts[codeOf(confidence)] = std::ranges::count(
        findings, confidence,
        [](const FindingResult& finding) { return finding.evidence.confidence; });
  }
  return counts;
}

Json listOf(const std::vector<HiveResult>& hives) {
  Json list = Json::array();
  for (const HiveResult& hive : hives) {
    list.push_back({{"file", hive.file},
                    {"state", hive.state},
                    {"entries", hive.entries},
                    {"pages", hive.pages},
                    {"why", hive.why}});
  }
  return list;
}

// What a scan and a search have in common.
void addFindings(Json& object, const ScanResult& result) {
  object["findings"] = listOf(result);
  object["total"] = result.findings.size();
  object["confidence"] = countsOf(result.findings);
  object["implausible"] = result.implausible;
  object["hives"] = listOf(result.hives);
}

void addRepair(Json& object, const RepairResult& repair) {
  Json refused = Json::array();
  for (const auto& [place, reason] : repair.refused) {
    refused.push_back({{"place", place}, {"reason", reason}});
  }
  if (repair.isRehearsal) {
    object["dryRun"] = {
        {"rows", repair.repaired}, {"takes", repair.takings}, {"leavesAlone", std::move(refused)}};
    return;
  }
  object["repaired"] = repair.repaired;
  object["outcome"] = {
      {"gone", repair.gone}, {"leftAlone", repair.leftAlone}, {"noEffect", repair.noEffect}};
  object["leftAlone"] = std::move(refused);
}

}  // namespace

std::vector<FindingResult> findingsOf(const Form42& form, const std::optional<ComputerUser>& user) {
  std::vector<FindingResult> findings;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    findings.push_back(findingOf(form, row, user));
  }
  return findings;
}

ScanResult scanResultOf(const Form42& form, const Computer& computer,
                        const std::optional<ComputerUser>& user) {
  ScanResult result;
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    result.categories.push_back(categoryOf(form, row));
  }
  result.findings = findingsOf(form, user);
  result.implausible = form.implausible;
  result.hives = computer.hives();
  return result;
}

std::string jsonText(const ScanResult& result, const std::optional<RepairResult>& repair) {
  Json categoryList = Json::array();
  for (const CategoryResult& category : result.categories) {
    categoryList.push_back({{"row", category.row},
                            {"key", category.key},
                            {"name", category.name},
                            {"checked", category.isChecked},
                            {"problems", category.problems},
                            {"status", category.status}});
  }
  Json object = {{"categories", std::move(categoryList)}};
  addFindings(object, result);
  if (repair) {
    addRepair(object, *repair);
  }
  return textOfJson(std::move(object));
}

std::string searchJsonText(const ScanResult& result) {
  Json object;
  addFindings(object, result);
  return textOfJson(std::move(object));
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
