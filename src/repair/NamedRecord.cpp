#include "repair/NamedRecord.h"

#include <algorithm>
#include <utility>

#include "evidence/OwnerVariables.h"
#include "evidence/Reasons.h"
#include "evidence/SecondLook.h"
#include "evidence/TextLook.h"
#include "form/Form42.h"
#include "keys/RootHandles.h"
#include "repair/LivingContent.h"
#include "runtime/FileSystemObject.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

std::string textOfValue(const RegistryState& registry, const RecordPlace& place) {
  const auto value = registry.value(place.key, place.value.value_or(u""));
  return value ? textOf(*value) : std::string();
}

// Whether a text contains a variable that may have another value for another user.
bool holdsUsersVariable(const std::string& text) {
  const auto parts = split(text, "%");
  for (std::size_t index = 1; index + 1 < parts.size(); index += 2) {
    if (!isCommonVariable(parts[index])) {
      return true;
    }
  }
  return false;
}

bool isCurrentUsers(const TruePlace& key) {
  return key.hive == HiveHandle::Users && OwnerVariables().ownerOf(key).empty();
}

// A user's class has the same code.
bool isFirewallRule(const TruePlace& key) {
  return isSameKey(
      key,
      possiblePlaces(HiveHandle::LocalMachine, scannedKeys::firewallRules, Views::True).front());
}

// In a scan, a rule without a path keeps the path of the rule before.
bool namesNoLostProgram(Form42& form, std::string rule) {
  std::string before = std::exchange(form.FirewallPath, {});
  pth(form, rule);
  std::string path = std::exchange(form.FirewallPath, std::move(before));
  const bool isNamed = !trim(path).empty();
  path = GetPath(form, path);
  return !isNamed || fileSystemObject::fileExists(path);
}

// What the second look says of the row now. A key goes whole only if its text is surely dead.
std::string doubtOfText(const Form42& form, const RegistryState& registry, const RecordPlace& place,
                        std::size_t row, Names names) {
  const Evidence evidence = lookAtRow(form, row);
  // What was implausible among all rows of the scan stays so.
  const Evidence* before = evidenceOf(form, row);
  const bool isImplausible =
      before != nullptr &&
      std::ranges::find(before->reasons, Reason::Implausible) != before->reasons.end();
  if (isFound(evidence) || isFoundNow(form, textOfValue(registry, place))) {
    return "what it refers to is there";
  }
  const bool isUncertain = isImplausible || evidence.confidence == Confidence::Unsure;
  return names == Names::KeyOfDeadText && isUncertain
             ? "it is not certain that what it refers to is gone (" +
                   reasonCodes(isImplausible ? *before : evidence) + ")"
             : "";
}

std::string doubtOf(Form42& form, const RegistryState& registry, const RecordPlace& place,
                    std::size_t row, const NamedPlace& named) {
  // A class of the current user has the code of a rule.
  const bool isTextJudged = named.doubt == Doubt::ThereByNow ||
                            named.doubt == Doubt::OthersVariables ||
                            (named.doubt == Doubt::RuleBefore && !isFirewallRule(place.key));
  if (isTextJudged) {
    if (std::string doubt = doubtOfText(form, registry, place, row, named.names); !doubt.empty()) {
      return doubt;
    }
  }
  switch (named.doubt) {
    case Doubt::OthersVariables:
      return !isCurrentUsers(place.key) && holdsUsersVariable(textOfValue(registry, place))
                 ? "its text has variables of another user"
                 : "";
    case Doubt::RuleBefore:
      return isFirewallRule(place.key) && namesNoLostProgram(form, textOfValue(registry, place))
                 ? "this rule names no program that is gone"
                 : "";
    default:
      return {};
  }
}

bool isBlank(const std::string& text) { return trim(text).empty(); }

class Seeker {
 public:
  Seeker(const Form42& formOfRow, const RegistryState& state, std::size_t rowSought)
      : form(formOfRow), registry(state), row(rowSought) {}

  // The merged classes root shows the user's keys before the computer's.
  [[nodiscard]] std::optional<RecordPlace> seek(const NamedPlace& named) const {
    for (const TruePlace& key : possiblePlaces(rootOf(named), keyOf(named), Views::True)) {
      const RecordPlace place = placeIn(key, named);
      const bool isFound =
          hasText(named) ? registry.hasValue(key, place.value.value_or(u"")) : registry.hasKey(key);
      if (isFound && !(named.isBlankPassedOver && isBlank(textOfValue(registry, place)))) {
        return place;
      }
    }
    return std::nullopt;
  }

 private:
  static bool hasText(const NamedPlace& named) { return named.names != Names::EmptyKey; }

  [[nodiscard]] HiveHandle rootOf(const NamedPlace& named) const {
    return named.root == rowsRoot ? rootOfRow(form, row) : named.root;
  }

  [[nodiscard]] std::string keyOf(const NamedPlace& named) const {
    const std::string key = textFor(form, row, named.key);
    return named.below.field == Field::None ? key : key + "\\" + textFor(form, row, named.below);
  }

  [[nodiscard]] RecordPlace placeIn(const TruePlace& key, const NamedPlace& named) const {
    return named.names == Names::Value
               ? RecordPlace{key, utf16UntilNul(textFor(form, row, named.value))}
               : RecordPlace{key, std::nullopt};
  }

  const Form42& form;
  const RegistryState& registry;
  std::size_t row;
};

}  // namespace

bool NamedRecord::isThere(const RegistryState& registry) const {
  switch (names) {
    case Names::Value:
      return registry.hasValue(place.key, *place.value);
    case Names::KeyOfDeadText:
      return registry.hasValue(place.key, u"");
    default:
      return registry.hasKey(place.key);
  }
}

std::u16string RecordPlace::text() const {
  return value ? key.fullPath() + u", value \"" + *value + u"\"" : key.fullPath();
}

bool isSameRecord(const RecordPlace& first, const RecordPlace& second) {
  return isSameKey(first.key, second.key) && first.value.has_value() == second.value.has_value() &&
         (!first.value || isSameName(*first.value, *second.value));
}

std::optional<NamedRecord> namedRecord(Form42& form, const RegistryState& registry, std::size_t row,
                                       const RepairKind& kind) {
  const Seeker seeker(form, registry, row);
  for (const NamedPlace& named : namedPlaces(form, row, kind.code)) {
    if (const auto place = seeker.seek(named)) {
      return NamedRecord{.names = named.names,
                         .place = *place,
                         .doubt = doubtOf(form, registry, *place, row, named)};
    }
  }
  return std::nullopt;
}

}  // namespace zelvreg
