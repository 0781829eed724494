#include "machine/registry/RegistryKey.h"

#include <algorithm>

#include "machine/base/CaseFold.h"

namespace zelvreg::machine {

ValueList::Values::Position ValueList::locate(std::u16string_view name) const {
  constexpr Values::Position nowhere{static_cast<std::size_t>(-1), 0};
  const Index* index = values.companion();
  if (index == nullptr) {
    for (Values::Position position{0, 0};; ++position.slot) {
      const RegistryValue* value = values.at(position);
      if (value == nullptr) {
        return nowhere;
      }
      if (isSameName(value->name(), name)) {
        return position;
      }
    }
  }
  const Numbered* found = index->byName.at(index->byName.partitionPoint(
      [name](const Numbered& entry) { return compareNames(entry.name.view(), name) < 0; }));
  if (found == nullptr || !isSameName(found->name.view(), name)) {
    return nowhere;
  }
  const auto position = index->numbers.partitionPoint(
      [found](std::uint32_t number) { return number < found->number; });
  return {position.chunk, position.slot};
}

const RegistryValue* ValueList::find(std::u16string_view name) const {
  return values.at(locate(name));
}

RegistryValue* ValueList::find(std::u16string_view name) { return values.at(locate(name)); }

// Of the value after all that are in the index.
void ValueList::addToIndex(Arena& arena, Index& index, Name name) {
  const std::uint32_t* last = index.numbers.last();
  const std::uint32_t number = last == nullptr ? 0 : *last + 1;
  index.numbers.append(arena, number);
  const auto place = index.byName.partitionPoint(
      [name](const Numbered& entry) { return compareNames(entry.name.view(), name.view()) < 0; });
  index.byName.insert(arena, place, {name, number});
}

void ValueList::append(Arena& arena, const RegistryValue& value) {
  const bool hadIndex = values.companion() != nullptr;
  values.append(arena, value);
  Index* index = values.companion();
  if (hadIndex) {
    addToIndex(arena, *index, value.valueName);
  } else if (index != nullptr) {
    values.forEach([&](const RegistryValue& each) { addToIndex(arena, *index, each.valueName); });
  }
}

void ValueList::assign(Arena& arena, std::vector<RegistryValue>& given) {
  if (given.size() > mostWithoutIndex) {
    for (const RegistryValue& value : given) {
      if (find(value.name()) == nullptr) {
        append(arena, value);
      }
    }
    return;
  }
  std::size_t kept = 0;
  for (std::size_t next = 0; next < given.size(); ++next) {
    const std::u16string_view name = given[next].name();
    const bool isDouble =
        std::any_of(given.begin(), given.begin() + static_cast<std::ptrdiff_t>(kept),
                    [&](const auto& other) { return isSameName(other.name(), name); });
    if (!isDouble) {
      given[kept++] = given[next];
    }
  }
  given.resize(kept);
  values.assign(arena, given);
}

bool ValueList::erase(Arena& arena, std::u16string_view name) {
  const Values::Position position = locate(name);
  if (values.at(position) == nullptr) {
    return false;
  }
  if (Index* index = values.companion()) {
    index->byName.erase(arena, index->byName.partitionPoint([name](const Numbered& entry) {
      return compareNames(entry.name.view(), name) < 0;
    }));
    index->numbers.erase(arena, {position.chunk, position.slot});
  }
  values.erase(arena, position);
  return true;
}

KeyList::Position placeIn(const KeyList& list, std::u16string_view name) {
  return list.partitionPoint(
      [name](const RegistryKey* key) { return compareNames(key->name(), name) < 0; });
}

std::size_t depthOf(const RegistryKey& key) {
  std::size_t depth = 0;
  for (const RegistryKey* above = key.parent; above != nullptr; above = above->parent) {
    ++depth;
  }
  return depth;
}

}  // namespace zelvreg::machine
