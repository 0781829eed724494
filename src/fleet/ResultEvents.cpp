#include "fleet/ResultEvents.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "json/JsonPieces.h"

namespace zelvreg::fleet {
namespace {

constexpr std::array<std::string_view, 13> keptMembers{
    "schema", "stream",   "command",     "computer", "started",  "seconds", "complete",
    "users",  "warnings", "implausible", "total",    "repaired", "hives"};

// A result nests five deep. More than this is somebody's attempt to exhaust a program.
constexpr std::size_t deepest = 64;
// Bytes of all members that are kept, of which those of a real result take some thousands.
constexpr std::size_t largestHead = 16'000'000;
constexpr std::size_t sizeOfValue = 64;
constexpr int schemaVersion = 1;

struct Field {
  std::string_view name;
  std::string SeenFinding::*text;
  bool isRequired;
};
constexpr std::array<Field, 6> fields{{{"category", &SeenFinding::category, true},
                                       {"badValue", &SeenFinding::badValue, true},
                                       {"rootName", &SeenFinding::rootName, true},
                                       {"subKey", &SeenFinding::subKey, true},
                                       {"user", &SeenFinding::user, false},
                                       {"sid", &SeenFinding::sid, false}}};
constexpr unsigned confidenceSeen = 1U << fields.size();

constexpr unsigned requiredFields() {
  unsigned required = confidenceSeen;
  for (std::size_t field = 0; field < fields.size(); ++field) {
    required |= fields[field].isRequired ? 1U << field : 0U;
  }
  return required;
}

}  // namespace

bool ResultEvents::fail(const std::string& why) {
  wrong = why;
  return false;
}

bool ResultEvents::takeField(const std::string& text) {
  if (name == "confidence") {
    const auto* const found = std::ranges::find(confidences, text);
    if (found == confidences.end()) {
      return fail(notAResult);
    }
    finding.confidence = static_cast<std::size_t>(found - confidences.begin());
    fieldsSeen |= confidenceSeen;
    return true;
  }
  const auto* const field = std::ranges::find(fields, name, &Field::name);
  if (field != fields.end()) {
    finding.*(field->text) = shortText(withoutStands(text));
    fieldsSeen |= 1U << static_cast<unsigned>(field - fields.begin());
  }
  return true;
}

bool ResultEvents::string(std::string& value) {
  return isInFinding() ? takeField(value) : take(std::move(value));
}

bool ResultEvents::take(Json value) {
  if (depth == 0 || isBetweenFindings()) {
    return fail(notAResult);
  }
  if (!isKept) {
    return true;
  }
  if (depth == 1 && name == "schema" && value != schemaVersion) {
    return fail(
        "has a schema that this version of the program does not know; merge it with the "
        "version that made it");
  }
  keptSize += sizeOfValue + (value.is_string() ? value.get_ref<std::string&>().size() : 0);
  if (keptSize > largestHead) {
    return fail("has more beside its findings than a result has; scan that computer again");
  }
  Json& container = building.empty() ? kept : *building.back();
  if (container.is_array()) {
    container.push_back(std::move(value));
  } else {
    container[name] = std::move(value);
  }
  return true;
}

bool ResultEvents::enter(Json container) {
  if (depth == deepest) {
    return fail("nests deeper than a result does; scan that computer again");
  }
  if (isKept) {
    if (!take(std::move(container))) {
      return false;
    }
    Json& outer = building.empty() ? kept : *building.back();
    building.push_back(outer.is_array() ? &outer.back() : &outer[name]);
  }
  ++depth;
  return true;
}

bool ResultEvents::leave() {
  --depth;
  if (!building.empty()) {
    building.pop_back();
  }
  return true;
}

bool ResultEvents::start_object(std::size_t /*size*/) {
  const bool begins = kind == Kind::Finding ? depth == 0 : isBetweenFindings();
  if (!enter(Json::object())) {
    return false;
  }
  if (begins) {
    isFinding = true;
    findingDepth = depth;
    fieldsSeen = 0;
    finding = {};
  }
  return true;
}

bool ResultEvents::end_object() {
  const bool ends = isInFinding();
  leave();
  return !ends || endFinding();
}

bool ResultEvents::endFinding() {
  isFinding = false;
  if ((fieldsSeen & requiredFields()) != requiredFields()) {
    return fail(notAResult);
  }
  ++findingCount;
  onFinding(finding);
  return true;
}

bool ResultEvents::key(std::string& key) {
  name = key;
  if (depth == 1 && kind == Kind::Result) {
    isKept = std::ranges::find(keptMembers, name) != keptMembers.end();
  }
  return true;
}

bool ResultEvents::start_array(std::size_t /*size*/) {
  if (depth == 0 || isBetweenFindings()) {
    return fail(notAResult);
  }
  isInList = isInList || (kind == Kind::Result && depth == 1 && name == "findings");
  return enter(Json::array());
}

bool ResultEvents::end_array() {
  isInList = isInList && !isBetweenFindings();
  return leave();
}

bool ResultEvents::parse_error(std::size_t /*place*/, const std::string& /*token*/,
                               const Json::exception& /*error*/) {
  return false;
}

}  // namespace zelvreg::fleet
