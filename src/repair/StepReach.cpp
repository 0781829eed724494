#include "repair/StepReach.h"

#include "keys/RootHandles.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// Which keys a call with one path reaches. The merged classes root shows two keys as one, the
// user's before the computer's.
struct Reach {
  std::optional<TruePlace> key;
  std::optional<TruePlace> behind;
};

Reach reachInView(const RegistryState& registry, HiveHandle hive, const std::string& key,
                  Views view) {
  Reach reach;
  for (const TruePlace& place : possiblePlaces(hive, key, view)) {
    if (registry.hasKey(place)) {
      (reach.key ? reach.behind : reach.key) = place;
    }
  }
  return reach;
}

std::vector<RecordPlace> wholeKey(const std::optional<TruePlace>& key) {
  return key ? std::vector<RecordPlace>{{*key, std::nullopt}} : std::vector<RecordPlace>{};
}

// A call that deletes one key refuses one with subkeys.
std::vector<RecordPlace> leaf(const RegistryState& registry, const Reach& reach) {
  const auto names = reach.key ? registry.subkeys(*reach.key) : std::nullopt;
  return names && !names->empty() ? std::vector<RecordPlace>{} : wholeKey(reach.key);
}

// A walk over a merged key lists the subkeys of both.
std::vector<RecordPlace> tree(const RegistryState& registry, const Reach& reach) {
  std::vector<RecordPlace> places = wholeKey(reach.key);
  if (reach.behind) {
    const auto names = registry.subkeys(*reach.behind);
    if (!names) {
      places.push_back({*reach.behind, std::nullopt});
    }
    for (const std::u16string& name : names.value_or(std::vector<std::u16string>{})) {
      places.push_back({below(*reach.behind, name), std::nullopt});
    }
  }
  return places;
}

std::vector<RecordPlace> value(const RegistryState& registry, const Reach& reach,
                               const std::u16string& name) {
  return reach.key && registry.hasValue(*reach.key, name)
             ? std::vector<RecordPlace>{{*reach.key, name}}
             : std::vector<RecordPlace>{};
}

}  // namespace

StepTarget targetOf(const Form42& form, std::size_t row, const RepairStep& step, HiveHandle root) {
  return {.root = step.root == rowsRoot ? root : step.root,
          .key = textFor(form, row, step.key),
          .value = textFor(form, row, step.value)};
}

bool deletesKey(Step step) {
  return step == Step::DeleteSubkey || step == Step::DeleteKey || step == Step::DeleteTree ||
         step == Step::DeleteByProvider || step == Step::DeleteIfKept;
}

std::string deletedKey(const RepairStep& step, const StepTarget& target) {
  return step.step == Step::DeleteSubkey ? target.key + "\\" + target.value : target.key;
}

std::vector<RecordPlace> reachOf(const RegistryState& registry, const RepairStep& step,
                                 const StepTarget& target) {
  const auto reach = [&](Views view) {
    return reachInView(registry, target.root, deletedKey(step, target), view);
  };
  switch (step.step) {
    case Step::DeleteValue:
      return value(registry, reach(Views::True), utf16UntilNul(target.value));
    case Step::EmptyDefault: {
      const Reach own = reach(Views::Own);
      return own.key ? std::vector<RecordPlace>{{*own.key, u""}} : std::vector<RecordPlace>{};
    }
    case Step::DeleteSubkey:
      return leaf(registry, reach(Views::True));
    case Step::DeleteKey:
      return leaf(registry, reach(Views::Own));
    case Step::DeleteTree:
      return tree(registry, reach(Views::True));
    case Step::DeleteByProvider:
    case Step::DeleteIfKept:
      return tree(registry, reach(Views::Own));
    default:
      return {};
  }
}

std::optional<TruePlace> reachOfGrant(const RegistryState& registry, const StepTarget& target) {
  return reachInView(registry, target.root, target.key, Views::True).key;
}

}  // namespace zelvreg
