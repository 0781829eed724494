// Names of keys and values, and the data of values. Most names of a registry stand in many places,
// and much of its data too, so that those that were kept lately are shared.
#ifndef ZELVREG_MACHINE_REGISTRY_NAME_POOL_H
#define ZELVREG_MACHINE_REGISTRY_NAME_POOL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "machine/base/Arena.h"

namespace zelvreg::machine {

// A name in one pointer; its length stands before its units. It lives as long as its pool's arena.
class Name {
 public:
  Name() = default;  // the empty one

  [[nodiscard]] std::u16string_view view() const { return {units, units[-1]}; }

 private:
  friend class NamePool;
  explicit Name(const char16_t* text) : units(text) {}

  static constexpr char16_t none[]{0, 0};
  const char16_t* units = none + 1;
};

class NamePool {
 public:
  // A name of at most longestValueName units.
  Name keep(Arena& arena, std::u16string_view name);

  // One that is not looked for among those that were kept, of which `fill` writes the `size` units.
  template <typename Fill>
  static Name make(Arena& arena, std::size_t size, Fill fill) {
    if (size == 0) {
      return {};
    }
    auto* place = arena.allocate<char16_t>(1 + size);
    *place = static_cast<char16_t>(size);
    fill(place + 1);
    return Name(place + 1);
  }

 private:
  static constexpr unsigned slotBits = 10;
  struct Slot {
    std::uint64_t hash = 0;
    Name name;
  };
  std::array<Slot, 1U << slotBits> lately;  // by hash
};

class DataPool {
 public:
  // Data that nobody changes. They begin at any address.
  std::span<const std::byte> keep(Arena& arena, std::span<const std::byte> data);

 private:
  static constexpr unsigned slotBits = 11;
  struct Slot {
    std::uint64_t hash = 0;
    std::span<const std::byte> data;
  };
  std::array<Slot, 1U << slotBits> lately;  // by hash
};

}  // namespace zelvreg::machine

#endif
