// Where in the list of a key a subkey was found last: what is sought next is often the same one
// again, or the one after it.
#ifndef ZELVREG_MACHINE_REGISTRY_LAST_FOUND_H
#define ZELVREG_MACHINE_REGISTRY_LAST_FOUND_H

#include <array>
#include <cstddef>
#include <cstdint>

#include "machine/registry/RegistryKey.h"

namespace zelvreg::machine {

// Positions may be stale: whoever uses one looks whether the right key is there.
class LastFound {
 public:
  // In a short list it would take longer to look than to search.
  [[nodiscard]] static bool isWorthWhile(const KeyList& list) {
    constexpr std::size_t shortList = 32;
    return list.at(KeyList::Position{0, shortList}) != nullptr;
  }

  // To be set to the place of what was found. Valid until the next call.
  [[nodiscard]] KeyList::Position& of(const RegistryKey& key) {
    constexpr std::uintptr_t keySize = sizeof(RegistryKey);
    Entry& entry = entries[reinterpret_cast<std::uintptr_t>(&key) / keySize % entryCount];
    if (entry.key != &key) {
      entry = {.key = &key, .position = {0, 0}};
    }
    return entry.position;
  }

 private:
  static constexpr std::size_t entryCount = 16;
  struct Entry {
    const RegistryKey* key = nullptr;
    KeyList::Position position{0, 0};
  };
  std::array<Entry, entryCount> entries;
};

}  // namespace zelvreg::machine

#endif
