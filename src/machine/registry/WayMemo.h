// The ways through the registry that were gone last. A scan opens key after key below the same few
// keys, so most of a way was often gone just before.
#ifndef ZELVREG_MACHINE_REGISTRY_WAY_MEMO_H
#define ZELVREG_MACHINE_REGISTRY_WAY_MEMO_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "machine/registry/RegistryHandles.h"

namespace zelvreg::machine {

// One way from a key, as far as the key above its last name.
class Way {
 public:
  struct Step {
    std::size_t end = 0;         // of the path so far; 0 at the very beginning
    RegistryKey* key = nullptr;  // where it has led, links followed
    int hops = 0;                // how many links these were
  };

  // The deepest step that this path goes too, which the way is cut to. Paths are compared exactly.
  Step goBackTo(std::u16string_view path);
  // The next step of the path that goBackTo() was given.
  void add(std::u16string_view path, const Step& step);

 private:
  friend class WayMemo;
  const RegistryKey* from = nullptr;
  View view = View::Bits64;
  std::uint64_t generation = 0;
  std::u16string names;
  std::vector<Step> steps;
};

class WayMemo {
 public:
  // The way that was gone last from this key in this view; an empty one in the place of the oldest
  // if none was, or not in this generation of the registry. Valid until the next call.
  Way& from(const RegistryKey& key, View view, std::uint64_t generation);

 private:
  std::array<Way, 8> ways;
  std::size_t oldest = 0;
};

}  // namespace zelvreg::machine

#endif
