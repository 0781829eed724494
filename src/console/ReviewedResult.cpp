#include "console/ReviewedResult.h"

#include <map>
#include <optional>
#include <stdexcept>
#include <tuple>

#include "evidence/Reasons.h"
#include "form/Form42.h"
#include "json/JsonText.h"

namespace zelvreg::console {
namespace {

using Json = nlohmann::json;

std::string member(const Json& finding, const char* name) { return textIn(finding.at(name)); }

// An older result of one user's scan does not say whose a finding is: it is meant for whoever is
// the current one.
constexpr const char* unsaid = "unsaid";

// An older result does not say it, so nobody has reviewed the row as unsure.
Confidence confidenceIn(const Json& finding) {
  return finding.contains("confidence") ? confidenceOfCode(member(finding, "confidence")).value()
                                        : Confidence::Likely;
}

FindingResult findingOf(const Json& finding) {
  return {.location = member(finding, "location"),
          .badValue = member(finding, "badValue"),
          .kindCode = member(finding, "kindCode"),
          .rootName = member(finding, "rootName"),
          .subKey = member(finding, "subKey"),
          .iconKey = {},
          .isChecked = finding.value("checked", true),
          .evidence = {.confidence = confidenceIn(finding), .reasons = {}, .tested = {}},
          .sid = finding.contains("sid") ? member(finding, "sid") : unsaid};
}

auto identityOf(const FindingResult& finding) {
  return std::make_tuple(finding.location, finding.badValue, finding.kindCode, finding.rootName,
                         finding.subKey, finding.sid);
}

std::runtime_error notAResult(const std::string& name) {
  return std::runtime_error(name + " is no result of a scan; give what scan --json printed, whole");
}

}  // namespace

std::vector<FindingResult> reviewedFindings(std::string_view json, const std::string& name) {
  std::vector<FindingResult> findings;
  try {
    const Json result = jsonOfText(json);
    for (const Json& finding : result.at("findings")) {
      findings.push_back(findingOf(finding));
    }
  } catch (const Json::exception&) {
    throw notAResult(name);
  } catch (const std::bad_optional_access&) {
    throw notAResult(name);
  }
  std::erase_if(findings, [](const FindingResult& finding) { return !finding.isChecked; });
  return findings;
}

ReviewedRows reviewedRows(const Form42& form, const std::vector<FindingResult>& reviewed,
                          const std::vector<ComputerUser>& users) {
  // Of equal findings the first listed is the first row.
  std::multimap<decltype(identityOf(reviewed.front())), Confidence> wanted;
  for (const FindingResult& finding : reviewed) {
    wanted.emplace(identityOf(finding), finding.evidence.confidence);
  }
  ReviewedRows result;
  auto found = findingsOf(form, users);
  for (std::size_t row = 1; row <= found.size(); ++row) {
    FindingResult& finding = found[row - 1];
    auto entry = wanted.find(identityOf(finding));
    // Several users are scanned by results that say whose a finding is.
    if (entry == wanted.end() && (!form.userScope || finding.sid.empty())) {
      finding.sid = unsaid;
      entry = wanted.find(identityOf(finding));
    }
    if (entry == wanted.end()) {
      continue;
    }
    result.rows.insert(row);
    if (entry->second == Confidence::Unsure) {
      result.reviewedAsUnsure.insert(row);
    }
    wanted.erase(entry);
  }
  return result;
}

}  // namespace zelvreg::console
