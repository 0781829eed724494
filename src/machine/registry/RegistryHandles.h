// The table behind the handles of open keys: a handle is a number that is checked, never a pointer
// that is trusted.
#ifndef ZELVREG_MACHINE_REGISTRY_REGISTRY_HANDLES_H
#define ZELVREG_MACHINE_REGISTRY_REGISTRY_HANDLES_H

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zelvreg::machine {

struct RegistryKey;

// Which of the two registries of a 64-bit computer is seen.
enum class View : std::uint8_t { Bits64, Bits32 };

// A key as an open handle sees it.
struct KeyPlace {
  View view = View::Bits64;
  bool isMerged = false;           // in HKEY_CLASSES_ROOT: the user's classes over the machine's
  RegistryKey* key = nullptr;      // by its logical path; merged: the machine's key, or null
  RegistryKey* userKey = nullptr;  // merged only: the user's key, or null
};

// Where the last enumeration of a merged key stood, so that the next index need not start anew.
struct MergeCursor {
  std::uint64_t generation = ~std::uint64_t{0};
  std::size_t next = 0;         // index of the merged subkey to come
  std::size_t userNext = 0;     // the user's subkeys that were passed
  std::size_t machineNext = 0;  // the machine's
};

struct OpenKey {
  KeyPlace place;
  ACCESS_MASK rights = 0;
  MergeCursor cursor;
};

class RegistryHandles {
 public:
  HKEY open(const OpenKey& key);
  // Null for a handle that was closed, or that this table never gave.
  [[nodiscard]] OpenKey* find(HKEY handle);
  // Whether it was open.
  bool close(HKEY handle);
  [[nodiscard]] std::size_t size() const { return openCount; }

  // The cursor of HKEY_CLASSES_ROOT, which is enumerated without being opened.
  [[nodiscard]] MergeCursor& rootCursor() { return classesRootCursor; }

 private:
  struct Slot {
    OpenKey key;
    std::uint32_t generation = 1;  // grows with each close, so that a stale handle is known
    bool isOpen = false;
  };
  [[nodiscard]] Slot* slotOf(HKEY handle);

  std::vector<Slot> slots;
  std::vector<std::uint32_t> freeSlots;
  std::size_t openCount = 0;
  MergeCursor classesRootCursor;
};

}  // namespace zelvreg::machine

#endif
