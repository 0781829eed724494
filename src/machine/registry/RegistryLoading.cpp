// Keys and values that come from hive files, read when they are first asked for.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "machine/base/CaseFold.h"
#include "machine/hive/HiveFile.h"
#include "machine/registry/Registry.h"
#include "roots/NameLimits.h"

namespace zelvreg::machine {
namespace {

// When so many subkeys have been asked for by name, all of them are read: they are found faster
// then.
constexpr std::size_t fewSubkeys = 32;

bool comesBefore(const RegistryKey* first, const RegistryKey* second) {
  return compareNames(first->name(), second->name()) < 0;
}

// Puts new keys in order with the first `sortedCount`. Of keys with one name the first can be
// reached, and one that was reached before stays. Whether no name is there twice.
bool putInOrder(std::vector<RegistryKey*>& keys, std::size_t sortedCount, bool areNewSorted) {
  if (areNewSorted && sortedCount == 0) {
    return true;
  }
  const auto firstNew = keys.begin() + static_cast<std::ptrdiff_t>(sortedCount);
  if (!areNewSorted) {
    std::stable_sort(firstNew, keys.end(), comesBefore);
  }
  std::inplace_merge(keys.begin(), firstNew, keys.end(), comesBefore);
  const auto firstDouble = std::unique(keys.begin(), keys.end(),
                                       [](const RegistryKey* first, const RegistryKey* second) {
                                         return isSameName(first->name(), second->name());
                                       });
  const bool hasNone = firstDouble == keys.end();
  keys.erase(firstDouble, keys.end());
  return hasNone;
}

bool mayBeName(const HiveText& text) { return text.size() > 0 && text.size() <= longestKeyName; }

}  // namespace

void Registry::mount(RegistryKey& parent, std::u16string_view name,
                     std::unique_ptr<HiveFile> hive) {
  RegistryKey& key = makeChild(parent, name);
  key.hive = hive.get();
  key.hiveNode = hive->root();
  key.childrenPending = true;
  key.valuesPending = true;
  key.mayBeLink = true;
  hives.push_back(std::move(hive));
}

Name Registry::makeName(const HiveText& text) {
  return NamePool::make(texts, text.size(), [&](char16_t* units) { text.copyTo(units); });
}

RegistryKey& Registry::newHiveKey(RegistryKey& parent, const HiveSubkey& subkey) {
  RegistryKey& key = newKey(&parent, makeName(subkey.name));
  key.hive = parent.hive;
  key.hiveNode = subkey.node;
  key.childrenPending = true;
  key.valuesPending = true;
  key.mayBeLink = true;
  return key;
}

RegistryKey* Registry::loadChild(RegistryKey& key, std::u16string_view name) {
  if (RegistryKey* known = loadedChild(key, name)) {
    return known;
  }
  const bool isSearched = key.role == KeyRole::Ordinary && key.children.size() < fewSubkeys &&
                          !name.empty() && name.size() <= longestKeyName &&
                          depthOf(key) < deepestKey;
  const FoundSubkey found =
      isSearched ? key.hive->content().findSubkey(key.hiveNode, name) : FoundSubkey();
  if (found.answer == FoundSubkey::Answer::Unclear) {
    loadChildren(key);
    return loadedChild(key, name);
  }
  if (found.answer == FoundSubkey::Answer::Absent) {
    return nullptr;
  }
  RegistryKey& child = newHiveKey(key, found.subkey);
  key.children.insert(arena, placeIn(key.children, child.name()), &child);
  return &child;
}

void Registry::loadChildren(RegistryKey& key) {
  key.childrenPending = false;
  std::vector<RegistryKey*> list = std::move(spareKeyList);
  list.clear();
  std::vector<std::uint32_t> known;
  key.children.forEach([&](RegistryKey* child) {
    list.push_back(child);
    known.push_back(child->hiveNode);
  });
  const bool isTooDeep = depthOf(key) >= deepestKey;
  bool areSorted = true;
  bool isWhole = true;
  const auto take = [&](const HiveSubkey& subkey) {
    if (isTooDeep || !mayBeName(subkey.name)) {
      isWhole = false;
      return;
    }
    RegistryKey& child = newHiveKey(key, subkey);
    if (child.name().find(u'\\') != std::u16string_view::npos) {
      isWhole = false;
      return;
    }
    areSorted = areSorted && (list.size() == known.size() || comesBefore(list.back(), &child));
    list.push_back(&child);
  };
  isWhole = key.hive->content().subkeys(key.hiveNode, known, std::ref(take)) && isWhole;
  isWhole = putInOrder(list, known.size(), areSorted) && isWhole;
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
  key.mayBeLink = false;
  std::vector<RegistryValue> list = std::move(spareValueList);
  list.clear();
  bool isWhole = true;
  const auto take = [&](const HiveValue& value) {
    if (value.name.size() > longestValueName) {
      isWhole = false;
      return;
    }
    list.push_back({.valueName = makeName(value.name),
                    .data = value.isInHive ? value.bytes.data() : texts.keep(value.bytes).data(),
                    .dataSize = static_cast<std::uint32_t>(value.bytes.size()),
                    .type = value.type});
    key.mayBeLink = key.mayBeLink || value.type == REG_LINK;
  };
  if (!key.hive->content().values(key.hiveNode, std::ref(take)) || !isWhole) {
    key.hive->noteDamage("not all values of " + pathOf(key) + " can be read");
  }
  key.values.assign(arena, list);
  spareValueList = std::move(list);
}

}  // namespace zelvreg::machine
