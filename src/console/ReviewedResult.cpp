#include "console/ReviewedResult.h"

#include <map>
#include <stdexcept>
#include <tuple>

#include "console/JsonText.h"
#include "form/Form42.h"

namespace zelvreg::console {
namespace {

using Json = nlohmann::json;

std::string member(const Json& finding, const char* name) { return textIn(finding.at(name)); }

FindingResult findingOf(const Json& finding) {
  return {.location = member(finding, "location"),
          .badValue = member(finding, "badValue"),
          .kindCode = member(finding, "kindCode"),
          .rootName = member(finding, "rootName"),
          .subKey = member(finding, "subKey"),
          .iconKey = {},
          .isChecked = finding.value("checked", true)};
}

auto identityOf(const FindingResult& finding) {
  return std::make_tuple(finding.location, finding.badValue, finding.kindCode, finding.rootName,
                         finding.subKey);
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
    throw std::runtime_error(name +
                             " is no result of a scan; give what scan --json printed, whole");
  }
  std::erase_if(findings, [](const FindingResult& finding) { return !finding.isChecked; });
  return findings;
}

std::size_t tickReviewed(Form42& form, const std::vector<FindingResult>& reviewed) {
  std::map<decltype(identityOf(reviewed.front())), std::size_t> wanted;
  for (const FindingResult& finding : reviewed) {
    ++wanted[identityOf(finding)];
  }
  std::size_t missing = reviewed.size();
  const auto found = scanResultOf(form).findings;
  for (std::size_t index = 0; index < found.size(); ++index) {
    const auto entry = wanted.find(identityOf(found[index]));
    const bool isWanted = entry != wanted.end() && entry->second > 0;
    if (isWanted) {
      --entry->second;
      --missing;
    }
    form.View2.setChecked(index + 1, isWanted);
  }
  return missing;
}

}  // namespace zelvreg::console
