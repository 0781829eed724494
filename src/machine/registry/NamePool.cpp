#include "machine/registry/NamePool.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace zelvreg::machine {
namespace {

using Bytes = std::span<const std::byte>;

constexpr std::size_t bytesAtOnce = sizeof(std::uint64_t);

std::uint64_t wordAt(Bytes bytes, std::size_t at) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes.data() + at, sizeof word);
  return word;
}

// By the ends and the middle, which tell most names and data apart.
std::uint64_t hashOf(Bytes bytes) {
  constexpr std::uint64_t factor = 0x9E3779B97F4A7C15;
  std::uint64_t hash = bytes.size();
  if (bytes.size() >= bytesAtOnce) {
    hash += wordAt(bytes, 0);
    hash = hash * factor ^ wordAt(bytes, bytes.size() / 2 - bytesAtOnce / 2);
    hash = hash * factor ^ wordAt(bytes, bytes.size() - bytesAtOnce);
  } else {
    for (const std::byte byte : bytes) {
      hash = hash * factor + std::to_integer<std::uint64_t>(byte);
    }
  }
  return hash * factor;
}

bool isSame(Bytes first, Bytes second) {
  return first.size() == second.size() &&
         std::memcmp(first.data(), second.data(), first.size()) == 0;
}

}  // namespace

Name NamePool::keep(Arena& arena, std::u16string_view name) {
  if (name.empty()) {
    return {};
  }
  const Bytes units = std::as_bytes(std::span(name));
  const std::uint64_t hash = hashOf(units);
  Slot& slot = lately[hash >> (64U - slotBits)];
  if (slot.hash != hash || !isSame(std::as_bytes(std::span(slot.name.view())), units)) {
    const auto fill = [name](char16_t* place) { std::ranges::copy(name, place); };
    slot = {hash, make(arena, name.size(), fill)};
  }
  return slot.name;
}

std::span<const std::byte> DataPool::keep(Arena& arena, std::span<const std::byte> data) {
  if (data.empty()) {
    return {};
  }
  const std::uint64_t hash = hashOf(data);
  Slot& slot = lately[hash >> (64U - slotBits)];
  if (slot.hash != hash || !isSame(slot.data, data)) {
    slot = {hash, arena.keep(data)};
  }
  return slot.data;
}

}  // namespace zelvreg::machine
