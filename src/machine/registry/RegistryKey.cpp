#include "machine/registry/RegistryKey.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>

#include "machine/base/CaseFold.h"

namespace zelvreg::machine {
namespace {

// From here on a search by hash is quicker than looking at each name.
constexpr std::size_t indexedSize = 64;

std::size_t hashOf(std::u16string_view name) {
  return std::hash<std::u16string>()(upperCase(name));
}

}  // namespace

ValueList::Values::Position ValueList::positionOf(std::uint32_t sequence) const {
  return values.partitionPoint(
      [sequence](const RegistryValue& value) { return value.sequence < sequence; });
}

ValueList::Values::Position ValueList::locate(std::u16string_view name) const {
  constexpr Values::Position nowhere{static_cast<std::size_t>(-1), 0};
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
  const auto [first, last] = index->equal_range(hashOf(name));
  for (auto candidate = first; candidate != last; ++candidate) {
    const Values::Position position = positionOf(candidate->second);
    if (isSameName(values.at(position)->name(), name)) {
      return position;
    }
  }
  return nowhere;
}

const RegistryValue* ValueList::find(std::u16string_view name) const {
  return values.at(locate(name));
}

RegistryValue* ValueList::find(std::u16string_view name) { return values.at(locate(name)); }

void ValueList::buildIndex() {
  index = std::make_unique<std::unordered_multimap<std::size_t, std::uint32_t>>();
  index->reserve(values.size() * 2);
  values.forEach(
      [this](const RegistryValue& value) { index->emplace(hashOf(value.name()), value.sequence); });
}

void ValueList::append(Arena& arena, RegistryValue value) {
  const RegistryValue* last = values.last();
  value.sequence = last == nullptr ? 0 : last->sequence + 1;
  values.append(arena, value);
  if (index != nullptr) {
    index->emplace(hashOf(value.name()), value.sequence);
  } else if (value.sequence >= indexedSize) {
    // Below this size all values are in one chunk, which locate() relies on.
    buildIndex();
  }
}

void ValueList::assign(Arena& arena, std::vector<RegistryValue>& given) {
  if (given.size() >= indexedSize) {
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
      given[kept] = given[next];
      given[kept].sequence = static_cast<std::uint32_t>(kept);
      ++kept;
    }
  }
  given.resize(kept);
  values.assign(arena, given);
}

bool ValueList::erase(std::u16string_view name) {
  const Values::Position position = locate(name);
  const RegistryValue* value = values.at(position);
  if (value == nullptr) {
    return false;
  }
  if (index != nullptr) {
    const auto [first, last] = index->equal_range(hashOf(name));
    for (auto candidate = first; candidate != last; ++candidate) {
      if (candidate->second == value->sequence) {
        index->erase(candidate);
        break;
      }
    }
  }
  values.erase(position);
  return true;
}

std::size_t depthOf(const RegistryKey& key) {
  std::size_t depth = 0;
  for (const RegistryKey* above = key.parent; above != nullptr; above = above->parent) {
    ++depth;
  }
  return depth;
}

}  // namespace zelvreg::machine
