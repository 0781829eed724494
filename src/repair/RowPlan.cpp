#include "repair/RowPlan.h"

#include <algorithm>

#include "form/Form42.h"
#include "keys/RootHandles.h"
#include "repair/LivingContent.h"
#include "repair/ProtectedKeys.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

bool isBlankDefault(const RegistryState& registry, const RecordPlace& place) {
  const auto value = registry.value(place.key, *place.value);
  return !value || trim(textOf(*value)).empty();
}

// Why a step of a row must not take something; the empty text if it may.
class Judge {
 public:
  Judge(const Form42& formInUse, const RegistryState& state, const NamedRecord* namedByRow)
      : form(formInUse), registry(state), named(namedByRow) {}

  [[nodiscard]] std::string whyNot(const RecordPlace& taking) const {
    if (named == nullptr || !isNamed(taking)) {
      return "the finding does not name it";
    }
    if (RegistryState::isBehindUsersLink(taking.key)) {
      return "a link that a user can make leads there";
    }
    if (!named->doubt.empty() || taking.value) {
      return named->doubt;
    }
    const auto living =
        livingContent(form, registry, taking.key,
                      named->names == Names::EmptyKey ? KeyIs::Empty : KeyIs::DeadReference);
    return living ? "it holds " + utf8(*living) + ", which may be in use" : std::string();
  }

 private:
  [[nodiscard]] bool isNamed(const RecordPlace& taking) const {
    if (isSameRecord(taking, named->place)) {
      return true;
    }
    // The default value of a key that is named goes with what is said of the key.
    const bool isItsDefault = named->names != Names::Value && taking.value &&
                              taking.value->empty() && isSameKey(taking.key, named->place.key);
    return isItsDefault &&
           (named->names == Names::KeyOfDeadText || isBlankDefault(registry, taking));
  }

  const Form42& form;
  const RegistryState& registry;
  const NamedRecord* named;
};

bool takesKeyOf(const StepPlan& step, const TruePlace& key) {
  return step.isAllowed() && std::ranges::any_of(step.takings, [&](const RecordPlace& taking) {
           return isSameKey(taking.key, key);
         });
}

// Rights are granted only on what a step of the row will take.
void planGrants(RowPlan& row, const std::vector<std::optional<TruePlace>>& granted) {
  for (std::size_t index = 0; index < granted.size(); ++index) {
    const auto& key = granted[index];
    if (key && std::ranges::none_of(row.steps,
                                    [&](const StepPlan& step) { return takesKeyOf(step, *key); })) {
      row.steps[index].leftAlone.push_back({utf8(key->fullPath()), "nothing of it goes"});
    }
  }
}

void noteGone(RegistryState& registry, const RepairStep& step, const StepPlan& plan) {
  if (!plan.isAllowed() || step.step == Step::EmptyDefault) {
    return;
  }
  for (const RecordPlace& taking : plan.takings) {
    if (taking.value) {
      registry.noteValueGone(taking.key, *taking.value);
    } else {
      registry.noteKeyGone(taking.key);
    }
  }
}

}  // namespace

bool RowPlan::isLeftAlone() const {
  for (std::size_t index = 0; index < steps.size(); ++index) {
    if (kind->steps[index].step != Step::Grant && !steps[index].isAllowed()) {
      return true;
    }
  }
  return false;
}

bool RowPlan::isGone(const RegistryState& registry) const {
  return named && !named->isThere(registry);
}

StepPlan planStep(const Form42& form, const RegistryState& registry,
                  const std::optional<NamedRecord>& named, const RepairStep& step,
                  const StepTarget& target) {
  StepPlan plan{.takings = reachOf(registry, step, target), .leftAlone = {}};
  if (!form.safeguards.protects) {
    return plan;
  }
  const std::string path = deletedKey(step, target);
  if (deletesKey(step.step) && isProtectedKey(target.root, path)) {
    // An unknown root is judged as the computer's.
    const HiveHandle root =
        target.root == HiveHandle::Unknown ? HiveHandle::LocalMachine : target.root;
    plan.leftAlone.push_back({keyPath(root, path), "records of other programs lie in it"});
    return plan;
  }
  const Judge judge(form, registry, named ? &*named : nullptr);
  for (const RecordPlace& taking : plan.takings) {
    const std::string reason = judge.whyNot(taking);
    if (!reason.empty()) {
      plan.leftAlone.push_back({utf8(taking.text()), reason});
    }
  }
  return plan;
}

RowPlan planRow(Form42& form, RegistryState& registry, std::size_t row, const RepairKind& kind,
                HiveHandle root) {
  RowPlan plan;
  plan.kind = &kind;
  plan.named = namedRecord(form, registry, row, kind);
  if (!plan.named) {
    // It may be what another row takes before.
    plan.named = namedRecord(form, RegistryState(), row, kind);
  }
  std::vector<std::optional<TruePlace>> granted;
  for (const RepairStep& step : kind.steps) {
    const StepTarget target = targetOf(form, row, step, root);
    const bool isGrant = step.step == Step::Grant;
    granted.push_back(isGrant ? reachOfGrant(registry, target) : std::nullopt);
    plan.steps.push_back(isGrant ? StepPlan() : planStep(form, registry, plan.named, step, target));
    plan.targets.push_back(target);
    noteGone(registry, step, plan.steps.back());
  }
  if (form.safeguards.protects) {
    planGrants(plan, granted);
  }
  return plan;
}

}  // namespace zelvreg
