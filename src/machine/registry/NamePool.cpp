#include "machine/registry/NamePool.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace zelvreg::machine {
namespace {

constexpr std::size_t unitsAtOnce = sizeof(std::uint64_t) / sizeof(char16_t);

std::uint64_t unitsFrom(std::u16string_view name, std::size_t at) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, name.data() + at, std::min(unitsAtOnce, name.size() - at) * sizeof(char16_t));
  return bits;
}

// By the ends and the middle of a name, which tell most names apart.
std::uint64_t hashOf(std::u16string_view name) {
  constexpr std::uint64_t factor = 0x9E3779B97F4A7C15;
  std::uint64_t hash = name.size();
  if (name.size() >= unitsAtOnce) {
    hash += unitsFrom(name, 0);
    hash = hash * factor ^ unitsFrom(name, name.size() / 2 - unitsAtOnce / 2);
    hash = hash * factor ^ unitsFrom(name, name.size() - unitsAtOnce);
  } else if (!name.empty()) {
    hash += unitsFrom(name, 0);
  }
  return hash * factor >> 32U;
}

}  // namespace

Name NamePool::keep(Arena& arena, std::u16string_view name) {
  if (name.empty()) {
    return {};
  }
  Name& slot = lately[hashOf(name) % slotCount];
  if (slot.view() != name) {
    auto* place = arena.allocate<char16_t>(1 + name.size());
    *place = static_cast<char16_t>(name.size());
    std::copy(name.begin(), name.end(), place + 1);
    slot = Name(place + 1);
  }
  return slot;
}

}  // namespace zelvreg::machine
