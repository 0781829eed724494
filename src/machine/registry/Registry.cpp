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

bool comesBefore(const RegistryKey* first, const RegistryKey* second) {
  return compareNames(first->name(), second->name()) < 0;
}

KeyList::Position lowerBound(const KeyList& list, std::u16string_view name) {
  return list.partitionPoint(
      [name](const RegistryKey* key) { return compareNames(key->name(), name) < 0; });
}

}  // namespace

Registry::Registry(int bits, std::string_view userSid)
    : has64BitView(bits == 64),
      machine(&newKey(nullptr, wideLongName(HiveHandle::LocalMachine))),
      users(&newKey(nullptr, wideLongName(HiveHandle::Users))) {
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
  const KeyList& list = children(key);
  RegistryKey* const* found = list.at(lowerBound(list, name));
  return found != nullptr && isSameName((*found)->name(), name) ? *found : nullptr;
}

const ValueList& Registry::values(RegistryKey& key) {
  if (key.valuesPending) {
    loadValues(key);
  }
  return key.values;
}

RegistryKey& Registry::newKey(RegistryKey* parent, std::u16string_view name) {
  static_assert(std::is_trivially_destructible_v<RegistryKey>, "the arena destroys nothing");
  RegistryKey& key = *std::construct_at(arena.allocate<RegistryKey>(1));
  key.parent = parent;
  key.keyName = names.keep(texts, name);
  return key;
}

// A name from a hive, until the next one.
std::u16string_view Registry::widened(std::string_view text) {
  spareName.resize(std::max(spareName.size(), text.size()));
  return {spareName.data(), utf16Into(spareName.data(), text)};
}

RegistryKey& Registry::addChild(RegistryKey& parent, std::u16string_view name) {
  static_cast<void>(children(parent));
  RegistryKey& key = newKey(&parent, name);
  RegistryKey* const* last = parent.children.last();
  // Files list keys in order, so most new ones belong at the end.
  if (last == nullptr || compareNames((*last)->name(), name) < 0) {
    parent.children.append(arena, &key);
  } else {
    parent.children.insert(arena, lowerBound(parent.children, name), &key);
  }
  ++keyGeneration;
  return key;
}

RegistryKey& Registry::makeChild(RegistryKey& parent, std::u16string_view name) {
  if (RegistryKey* found = child(parent, name)) {
    return found->isAlias ? *aliasTarget(*found) : *found;
  }
  hasNewContent = true;
  if (RegistryKey* target = makeAliasTarget(parent, name)) {
    return *target;
  }
  RegistryKey& key = addChild(parent, name);
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
  KeyList& siblings = key.parent->children;
  siblings.erase(arena, lowerBound(siblings, key.name()));
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
  if (old == nullptr) {
    const std::span<std::byte> kept = texts.keep(bytes);
    key.values.append(arena, {.valueName = names.keep(texts, name),
                              .data = kept.data(),
                              .dataSize = static_cast<std::uint32_t>(kept.size()),
                              .type = type});
    noteValuesChanged(key);
    return;
  }
  const bool isSame = old->type == type && std::ranges::equal(old->bytes(), bytes);
  if (isSame) {
    return;
  }
  if (bytes.size() <= old->dataSize) {
    std::copy(bytes.begin(), bytes.end(), old->data);
  } else {
    old->data = texts.keep(bytes).data();
  }
  old->dataSize = static_cast<std::uint32_t>(bytes.size());
  old->type = type;
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
  if (key.valuesPending && key.hive->valueCount(key.hiveNode) == 1) {
    loadValues(key);
  }
  if (!key.mayBeLink || key.values.size() != 1) {
    return false;
  }
  const RegistryValue& value = *key.values.at(0);
  return value.type == REG_LINK && isSameName(value.name(), symbolicLinkValue);
}

void Registry::mount(RegistryKey& parent, std::u16string_view name,
                     std::unique_ptr<HiveFile> hive) {
  RegistryKey& key = makeChild(parent, name);
  key.hive = hive.get();
  key.hiveNode = hive->root();
  key.childrenPending = true;
  key.valuesPending = true;
  hives.push_back(std::move(hive));
}

void Registry::loadChildren(RegistryKey& key) {
  key.childrenPending = false;
  std::vector<RegistryKey*> list = std::move(spareKeyList);
  list.clear();
  bool isSorted = true;
  bool isWhole = true;
  const auto take = [&](std::string_view narrow, std::uint32_t node) {
    const std::u16string_view name = widened(narrow);
    const bool isTooDeep = list.empty() && depthOf(key) >= deepestKey;
    if (isTooDeep || name.empty() || name.size() > longestKeyName ||
        name.find(u'\\') != std::u16string_view::npos) {
      isWhole = false;
      return;
    }
    RegistryKey& found = newKey(&key, name);
    found.hive = key.hive;
    found.hiveNode = node;
    found.childrenPending = true;
    found.valuesPending = true;
    isSorted = isSorted && (list.empty() || comesBefore(list.back(), &found));
    list.push_back(&found);
  };
  isWhole = key.hive->subkeys(key.hiveNode, take) && isWhole;
  if (!isSorted) {
    // Of keys with one name only the first can be reached; the others are damage.
    std::stable_sort(list.begin(), list.end(), comesBefore);
    const auto firstDouble = std::unique(list.begin(), list.end(),
                                         [](const RegistryKey* first, const RegistryKey* second) {
                                           return isSameName(first->name(), second->name());
                                         });
    isWhole = isWhole && firstDouble == list.end();
    list.erase(firstDouble, list.end());
  }
  if (!isWhole) {
    key.hive->noteDamage("not all subkeys of " + pathOf(key) + " can be read");
  }
  key.children.assign(arena, list);
  if (key.role != KeyRole::Ordinary) {
    for (RegistryKey* child : list) {
      child->role = roleOf(key, child->name());
    }
    for (RegistryKey* child : list) {
      tieAliases(*child);
    }
  }
  spareKeyList = std::move(list);
}

void Registry::loadValues(RegistryKey& key) {
  key.valuesPending = false;
  std::vector<RegistryValue> list = std::move(spareValueList);
  list.clear();
  bool isWhole = true;
  const auto take = [&](const HiveValue& value) {
    const std::u16string_view name = widened(value.name);
    if (name.size() > longestValueName) {
      isWhole = false;
      return;
    }
    const std::span<std::byte> kept = texts.keep(value.bytes);
    list.push_back({.valueName = names.keep(texts, name),
                    .data = kept.data(),
                    .dataSize = static_cast<std::uint32_t>(kept.size()),
                    .type = value.type});
    key.mayBeLink = key.mayBeLink || value.type == REG_LINK;
  };
  if (!key.hive->values(key.hiveNode, take) || !isWhole) {
    key.hive->noteDamage("not all values of " + pathOf(key) + " can be read");
  }
  key.values.assign(arena, list);
  spareValueList = std::move(list);
}

}  // namespace zelvreg::machine
