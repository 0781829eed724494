// The results of scans, repairs and searches as JSON; docs/schema/result-1.json describes it.
#include <algorithm>
#include <map>

#include "console/ScanResult.h"
#include "evidence/Reasons.h"
#include "form/Version.h"
#include "json/JsonText.h"
#include "text/Numbers.h"

namespace zelvreg::console {
namespace {

using Json = nlohmann::ordered_json;

constexpr int schemaVersion = 1;

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

Json objectOf(const FindingResult& finding) {
  return {{"location", finding.location},
          {"badValue", finding.badValue},
          {"kindCode", finding.kindCode},
          {"rootName", finding.rootName},
          {"subKey", finding.subKey},
          {"iconKey", finding.iconKey},
          {"checked", finding.isChecked},
          {"confidence", codeOf(finding.evidence.confidence)},
          {"reasons", codesOf(finding.evidence.reasons)},
          {"tested", listOf(finding.evidence.tested)}};
}

// A search has neither categories nor owners.
Json objectOfScan(const FindingResult& finding) {
  Json object = objectOf(finding);
  object["category"] = finding.category;
  object["user"] = finding.user;
  object["sid"] = finding.sid;
  return object;
}

// How many findings have each confidence.
Json confidencesOf(const std::vector<FindingResult>& findings) {
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

// What stands behind the findings.
void addSummary(Json& object, const ScanResult& result) {
  object["total"] = result.findings.size();
  object["confidence"] = confidencesOf(result.findings);
  object["implausible"] = result.implausible;
  object["hives"] = listOf(result.hives);
}

Json computerOf(const ComputerFacts& facts) {
  return {{"name", facts.name},
          {"identity", facts.identity},
          {"windows", {{"product", facts.product}, {"version", facts.version}}},
          {"bits", facts.bits},
          {"codePage", facts.codePage}};
}

Json usersOf(const ScanResult& result) {
  Json list = Json::array();
  for (const ComputerUser& user : result.facts.users) {
    list.push_back(
        {{"name", user.name},
         {"sid", user.sid},
         {"findings", std::ranges::count(result.findings, user.sid, &FindingResult::sid)}});
  }
  return list;
}

// In the order of the categories, and of the numbers of the kinds. A row that the scan has left
// without its fields has neither.
Json countsOf(const ScanResult& result) {
  std::map<std::string, std::size_t> byCategory;
  std::map<std::int32_t, std::size_t> byKind;
  for (const FindingResult& finding : result.findings) {
    ++byCategory[finding.category];
    if (!finding.kindCode.empty()) {
      ++byKind[leadingInteger(finding.kindCode)];
    }
  }
  Json categories = Json::object();
  for (const CategoryResult& category : result.categories) {
    if (const auto count = byCategory.find(category.key); count != byCategory.end()) {
      categories[category.key] = count->second;
    }
  }
  Json kinds = Json::object();
  for (const auto& [kind, count] : byKind) {
    kinds[std::to_string(kind)] = count;
  }
  return {{"findings", result.findings.size()},
          {"checked", std::ranges::count(result.findings, true, &FindingResult::isChecked)},
          {"categories", std::move(categories)},
          {"kinds", std::move(kinds)}};
}

Json listOf(const std::vector<CategoryResult>& categories) {
  Json list = Json::array();
  for (const CategoryResult& category : categories) {
    list.push_back({{"row", category.row},
                    {"key", category.key},
                    {"name", category.name},
                    {"checked", category.isChecked},
                    {"problems", category.problems},
                    {"status", category.status}});
  }
  return list;
}

// All but the findings. They are told where they always stood, so their place is kept for them.
Json headOf(const ScanResult& result) {
  const ResultFacts& facts = result.facts;
  return {{"schema", schemaVersion},
          {"program", {{"name", "zelvreg"}, {"version", programVersion()}}},
          {"command", facts.command},
          {"computer", computerOf(facts.computer)},
          {"started", facts.started},
          {"seconds", facts.seconds},
          {"complete", facts.isComplete},
          {"users", usersOf(result)},
          {"warnings", facts.warnings},
          {"unseen", facts.unseen},
          {"counts", countsOf(result)},
          {"categories", listOf(result.categories)}};
}

void addRepair(Json& object, const std::optional<RepairResult>& repair) {
  if (!repair) {
    return;
  }
  Json refused = Json::array();
  for (const auto& [place, reason] : repair->refused) {
    refused.push_back({{"place", place}, {"reason", reason}});
  }
  if (repair->isRehearsal) {
    object["dryRun"] = {{"rows", repair->repaired},
                        {"takes", repair->takings},
                        {"leavesAlone", std::move(refused)}};
    return;
  }
  object["repaired"] = repair->repaired;
  object["outcome"] = {
      {"gone", repair->gone}, {"leftAlone", repair->leftAlone}, {"noEffect", repair->noEffect}};
  object["leftAlone"] = std::move(refused);
}

}  // namespace

std::string jsonText(const ScanResult& result, const std::optional<RepairResult>& repair) {
  Json object = headOf(result);
  Json& findings = object["findings"] = Json::array();
  for (const FindingResult& finding : result.findings) {
    findings.push_back(objectOfScan(finding));
  }
  addSummary(object, result);
  addRepair(object, repair);
  return textOfJson(std::move(object));
}

std::string jsonLines(const ScanResult& result, const std::optional<RepairResult>& repair) {
  Json head = headOf(result);
  addSummary(head, result);
  addRepair(head, repair);
  head["stream"] = true;
  std::string text = lineOfJson(std::move(head));
  for (const FindingResult& finding : result.findings) {
    text += lineOfJson(objectOfScan(finding));
  }
  return text;
}

std::string searchJsonText(const ScanResult& result) {
  Json object;
  Json& findings = object["findings"] = Json::array();
  for (const FindingResult& finding : result.findings) {
    findings.push_back(objectOf(finding));
  }
  addSummary(object, result);
  return textOfJson(std::move(object));
}

}  // namespace zelvreg::console
