// Subkeys and values of a place, merged where the place is in HKEY_CLASSES_ROOT.
#include "machine/base/CaseFold.h"
#include "machine/registry/RegistryWalk.h"

namespace zelvreg::machine {
namespace {

// One of the two keys of a merged place; a deleted one has nothing.
struct Side {
  Registry& registry;
  RegistryKey* key;

  [[nodiscard]] RegistryKey* subkey(std::size_t index) const {
    if (key == nullptr || key->isDeleted) {
      return nullptr;
    }
    RegistryKey* const* found = registry.children(*key).at(index);
    return found == nullptr ? nullptr : *found;
  }

  [[nodiscard]] const ValueList* values() const {
    return key == nullptr || key->isDeleted ? nullptr : &registry.values(*key);
  }
};

const RegistryValue* valueAtOf(const ValueList* list, std::size_t index) {
  return list == nullptr ? nullptr : list->at(index);
}

}  // namespace

RegistryKey* subkeyAt(Registry& registry, const KeyPlace& place, std::size_t index,
                      MergeCursor& cursor) {
  if (!place.isMerged) {
    return Side{registry, shownKey(registry, place)}.subkey(index);
  }
  const Side user{registry, place.userKey};
  const Side machine{registry, place.key};
  if (cursor.generation != registry.generation() || index < cursor.next) {
    cursor = {.generation = registry.generation()};
  }
  while (true) {
    RegistryKey* ofUser = user.subkey(cursor.userNext);
    RegistryKey* ofMachine = machine.subkey(cursor.machineNext);
    if (ofUser == nullptr && ofMachine == nullptr) {
      return nullptr;
    }
    const int order = ofUser == nullptr      ? 1
                      : ofMachine == nullptr ? -1
                                             : compareNames(ofUser->name(), ofMachine->name());
    cursor.userNext += order <= 0 ? 1U : 0U;
    cursor.machineNext += order >= 0 ? 1U : 0U;
    if (cursor.next++ == index) {
      return order <= 0 ? ofUser : ofMachine;
    }
  }
}

const RegistryValue* valueAt(Registry& registry, const KeyPlace& place, std::size_t index) {
  if (!place.isMerged) {
    return valueAtOf(Side{registry, shownKey(registry, place)}.values(), index);
  }
  const ValueList* ofUser = Side{registry, place.userKey}.values();
  const ValueList* ofMachine = Side{registry, place.key}.values();
  if (ofUser == nullptr || ofMachine == nullptr) {
    return valueAtOf(ofUser != nullptr ? ofUser : ofMachine, index);
  }
  if (index < ofUser->size()) {
    return ofUser->at(index);
  }
  index -= ofUser->size();
  for (std::size_t next = 0; next < ofMachine->size(); ++next) {
    const RegistryValue& value = *ofMachine->at(next);
    if (ofUser->find(value.name()) == nullptr && index-- == 0) {
      return &value;
    }
  }
  return nullptr;
}

const RegistryValue* findValue(Registry& registry, const KeyPlace& place,
                               std::u16string_view name) {
  const Side sides[] = {{registry, place.userKey},
                        {registry, place.isMerged ? place.key : shownKey(registry, place)}};
  for (const Side& side : sides) {
    const ValueList* list = side.values();
    const RegistryValue* value = list == nullptr ? nullptr : list->find(name);
    if (value != nullptr) {
      return value;
    }
  }
  return nullptr;
}

}  // namespace zelvreg::machine
