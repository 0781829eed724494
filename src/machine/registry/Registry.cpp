#include "machine/registry/Registry.h"

#include <algorithm>
#include <memory>
#include <type_traits>
#include <utility>

#include "machine/base/CaseFold.h"
#include "machine/hive/HiveFile.h"
#include "roots/NameLimits.h"
#include "roots/Roots.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

constexpr std::u16string_view symbolicLinkValue = u"SymbolicLinkValue";

}  // namespace

Registry::Registry(int bits, std::string_view userSid)
    : has64BitView(bits == 64),
      machine(&newKey(nullptr, names.keep(texts, wideLongName(HiveHandle::LocalMachine)))),
      users(&newKey(nullptr, names.keep(texts, wideLongName(HiveHandle::Users)))) {
  machine->role = KeyRole::MachineRoot;
  users->role = KeyRole::UsersRoot;
  setCurrentUser(userSid);
  finishLoading();
}

Registry::~Registry() = default;

void Registry::setCurrentUser(std::string_view sid) {
  ++keyGeneration;
  RegistryKey* before = std::exchange(user, &makeChild(*users, utf16(sid)));
  const bool wasPlaceholder = before != nullptr && before != user && before->hive == nullptr &&
                              children(*before).empty() && values(*before).size() == 0;
  if (wasPlaceholder) {
    erase(*before);
  }
}

const KeyList& Registry::children(RegistryKey& key) {
  if (key.childrenPending) {
    loadChildren(key);
  }
  return key.children;
}

RegistryKey* Registry::child(RegistryKey& key, std::u16string_view name) {
  return key.childrenPending ? loadChild(key, name) : loadedChild(key, name);
}

RegistryKey* Registry::loadedChild(RegistryKey& key, std::u16string_view name) {
  const auto isNamed = [name](RegistryKey* const* found) {
    return found != nullptr && isSameName((*found)->name(), name);
  };
  const KeyList& list = key.children;
  KeyList::Position* last = LastFound::isWorthWhile(list) ? &lastFound.of(key) : nullptr;
  if (last != nullptr) {
    for (const KeyList::Position near : {*last, list.after(*last)}) {
      if (RegistryKey* const* found = list.at(near); isNamed(found)) {
        *last = near;
        return *found;
      }
    }
  }
  const KeyList::Position place = placeIn(list, name);
  RegistryKey* const* found = list.at(place);
  if (!isNamed(found)) {
    return nullptr;
  }
  if (last != nullptr) {
    *last = place;
  }
  return *found;
}

const ValueList& Registry::values(RegistryKey& key) {
  if (key.valuesPending) {
    loadValues(key);
  }
  return key.values;
}

RegistryKey& Registry::newKey(RegistryKey* parent, Name name) {
  static_assert(std::is_trivially_destructible_v<RegistryKey>, "the arena destroys nothing");
  RegistryKey& key = *std::construct_at(arena.allocate<RegistryKey>(1));
  key.parent = parent;
  key.keyName = name;
  return key;
}

RegistryKey& Registry::addChild(RegistryKey& parent, std::u16string_view name,
                                KeyList::Position place) {
  RegistryKey& key = newKey(&parent, names.keep(texts, name));
  parent.children.insert(arena, place, &key);
  ++keyGeneration;
  return key;
}

RegistryKey& Registry::makeChild(RegistryKey& parent, std::u16string_view name) {
  if (RegistryKey* found = child(parent, name)) {
    return found->isAlias ? *aliasTarget(*found) : *found;
  }
  return makeMissingChild(parent, name, placeIn(children(parent), name));
}

RegistryKey* Registry::makeLastChild(RegistryKey& parent, std::u16string_view name) {
  const KeyList& list = children(parent);
  RegistryKey* const* last = list.last();
  const bool isLast = last == nullptr || compareNames((*last)->name(), name) < 0;
  return isLast ? &makeMissingChild(parent, name, list.end()) : nullptr;
}

RegistryKey& Registry::makeMissingChild(RegistryKey& parent, std::u16string_view name,
                                        KeyList::Position place) {
  hasNewContent = true;
  if (RegistryKey* target = makeAliasTarget(parent, name)) {
    return *target;
  }
  RegistryKey& key = addChild(parent, name, place);
  key.role = roleOf(parent, name);
  if (!hives.empty()) {
    changes.noteMade(key);
  }
  tieAliases(key);
  return key;
}

bool Registry::isErasable(const RegistryKey& key) const {
  return key.parent != nullptr && &key != user;
}

void Registry::erase(RegistryKey& key) {
  // A hive that still held the siblings would give this one again with them.
  static_cast<void>(children(*key.parent));
  KeyList& siblings = key.parent->children;
  siblings.erase(arena, placeIn(siblings, key.name()));
  forget(key);
  if (!hives.empty()) {
    changes.noteErased(key);
  }
  ++keyGeneration;
  hasNewContent = true;
}

// Marks a subtree that is no longer in the tree as deleted. What a hive has not given yet was
// never seen by anybody.
void Registry::forget(RegistryKey& key) {
  key.isDeleted = true;
  key.childrenPending = false;
  key.valuesPending = false;
  if (key.security != 0) {
    key.security = 0;
    hasNewSecurity = true;
  }
  if (key.isAlias) {
    aliases.erase(&key);
  }
  if (key.role == KeyRole::Classes || key.role == KeyRole::ClassesWow) {
    const auto alias = std::find_if(aliases.begin(), aliases.end(),
                                    [&](const auto& entry) { return entry.second == &key; });
    if (alias != aliases.end()) {
      erase(const_cast<RegistryKey&>(*alias->first));
    }
  }
  const KeyList below = std::exchange(key.children, {});
  below.forEach([this](RegistryKey* child) { forget(*child); });
  key.values = {};
}

void Registry::setValue(RegistryKey& key, std::u16string_view name, DWORD type,
                        std::span<const std::byte> bytes) {
  static_cast<void>(values(key));
  key.mayBeLink = key.mayBeLink || type == REG_LINK;
  keyGeneration += key.mayBeLink ? 1 : 0;
  RegistryValue* old = key.values.find(name);
  if (old != nullptr && old->type == type && std::ranges::equal(old->bytes(), bytes)) {
    return;
  }
  const std::span<const std::byte> kept = data.keep(texts, bytes);
  if (old == nullptr) {
    key.values.append(arena, {.valueName = names.keep(texts, name),
                              .data = kept.data(),
                              .dataSize = static_cast<std::uint32_t>(kept.size()),
                              .type = type});
  } else {
    old->data = kept.data();
    old->dataSize = static_cast<std::uint32_t>(kept.size());
    old->type = type;
  }
  noteValuesChanged(key);
}

void Registry::noteValuesChanged(RegistryKey& key) {
  hasNewContent = true;
  if (!hives.empty()) {
    changes.noteValues(key);
  }
}

bool Registry::eraseValue(RegistryKey& key, std::u16string_view name) {
  static_cast<void>(values(key));
  const bool wasThere = key.values.erase(arena, name);
  keyGeneration += key.mayBeLink ? 1 : 0;
  if (wasThere) {
    noteValuesChanged(key);
  }
  return wasThere;
}

bool Registry::isLink(RegistryKey& key) {
  if (key.isAlias) {
    return true;
  }
  if (key.mayBeLink && key.valuesPending) {
    if (key.hive->content().hasJust(key.hiveNode, REG_LINK)) {
      loadValues(key);
    } else {
      key.mayBeLink = false;
    }
  }
  if (!key.mayBeLink || key.values.size() != 1) {
    return false;
  }
  const RegistryValue& value = *key.values.at(0);
  return value.type == REG_LINK && isSameName(value.name(), symbolicLinkValue);
}

}  // namespace zelvreg::machine
