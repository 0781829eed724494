#include "machine/registry/NamePool.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace zelvreg::machine {
namespace {

constexpr std::size_t unitsAtOnce = sizeof(std::uint64_t) / sizeof(char16_t);

std::uint64_t unitsAt(const char16_t* place) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, place, sizeof bits);
  return bits;
}

// By the ends and the middle of a name, which tell most names apart.
std::uint64_t hashOf(std::u16string_view name) {
  constexpr std::uint64_t factor = 0x9E3779B97F4A7C15;
  std::uint64_t hash = name.size();
  if (name.size() >= unitsAtOnce) {
    hash += unitsAt(name.data());
    hash = hash * factor ^ unitsAt(name.data() + name.size() / 2 - unitsAtOnce / 2);
    hash = hash * factor ^ unitsAt(name.data() + name.size() - unitsAtOnce);
  } else {
    for (const char16_t unit : name) {
      hash = hash * factor + unit;
    }
  }
  return hash * factor;
}

bool isSame(std::u16string_view first, std::u16string_view second) {
  return first.size() == second.size() &&
         std::memcmp(first.data(), second.data(), first.size() * sizeof(char16_t)) == 0;
}

}  // namespace

Name NamePool::keep(Arena& arena, std::u16string_view name) {
  if (name.empty()) {
    return {};
  }
  const std::uint64_t hash = hashOf(name);
  Slot& slot = lately[hash >> (64U - slotBits)];
  if (slot.hash != hash || !isSame(slot.name.view(), name)) {
    auto* place = arena.allocate<char16_t>(1 + name.size());
    *place = static_cast<char16_t>(name.size());
    std::copy(name.begin(), name.end(), place + 1);
    slot = {hash, Name(place + 1)};
  }
  return slot.name;
}

}  // namespace zelvreg::machine
