// The paths that were opened last. A program often opens one path several times over: to look
// whether the key is there, to read each of its values, to change its list.
#ifndef ZELVREG_MACHINE_REGISTRY_PATH_MEMO_H
#define ZELVREG_MACHINE_REGISTRY_PATH_MEMO_H

#include <windows.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "machine/registry/RegistryHandles.h"

namespace zelvreg::machine {

// What decides where an open from a predefined root leads.
struct PathQuestion {
  HKEY root = nullptr;
  REGSAM viewFlags = 0;
  DWORD options = 0;
  std::u16string_view path;
};

// Where HKEY_CLASSES_ROOT led to in this generation of the registry, in the 64-bit view.
struct ClassesRootMemo {
  std::uint64_t generation = ~std::uint64_t{0};
  RegistryKey* machines = nullptr;
  RegistryKey* users = nullptr;
};

class PathMemo {
 public:
  // The place, or that there is no such place; null for a path that is not remembered. An answer
  // holds only for the registry's generation in which it was kept.
  [[nodiscard]] const std::optional<KeyPlace>* find(const PathQuestion& question,
                                                    std::uint64_t generation) const;
  // In the place of the answer that was kept longest.
  void keep(const PathQuestion& question, std::uint64_t generation,
            const std::optional<KeyPlace>& place);

 private:
  struct Answer {
    HKEY root = nullptr;
    REGSAM viewFlags = 0;
    DWORD options = 0;
    std::uint64_t generation = 0;
    std::u16string path;
    std::optional<KeyPlace> place;
  };

  std::array<Answer, 4> answers;
  std::size_t oldest = 0;
};

}  // namespace zelvreg::machine

#endif
