#include "machine/registry/RegistryHandles.h"

namespace zelvreg::machine {
namespace {

// A handle is the slot's generation over the slot's number times 4, plus 4: never a predefined key
// and, like those of Windows, a multiple of 4.
constexpr unsigned generationShift = 32;
static_assert(sizeof(ULONG_PTR) == 8, "handles hold a generation in their upper half");

}  // namespace

RegistryHandles::Slot* RegistryHandles::slotOf(HKEY handle) {
  const auto number = reinterpret_cast<ULONG_PTR>(handle);
  const auto generation = static_cast<std::uint32_t>(number >> generationShift);
  const auto low = static_cast<std::uint32_t>(number);
  if (low < 4 || low % 4 != 0 || low / 4 > slots.size()) {
    return nullptr;
  }
  Slot& slot = slots[low / 4 - 1];
  return slot.isOpen && slot.generation == generation ? &slot : nullptr;
}

HKEY RegistryHandles::open(const OpenKey& key) {
  std::uint32_t index = 0;
  if (freeSlots.empty()) {
    index = static_cast<std::uint32_t>(slots.size());
    slots.emplace_back();
  } else {
    index = freeSlots.back();
    freeSlots.pop_back();
  }
  Slot& slot = slots[index];
  slot.key = key;
  slot.isOpen = true;
  ++openCount;
  return reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(slot.generation) << generationShift |
                                static_cast<ULONG_PTR>(index + 1) * 4);
}

OpenKey* RegistryHandles::find(HKEY handle) {
  Slot* slot = slotOf(handle);
  return slot == nullptr ? nullptr : &slot->key;
}

bool RegistryHandles::close(HKEY handle) {
  Slot* slot = slotOf(handle);
  if (slot == nullptr) {
    return false;
  }
  slot->isOpen = false;
  ++slot->generation;
  freeSlots.push_back(static_cast<std::uint32_t>(slot - slots.data()));
  --openCount;
  return true;
}

}  // namespace zelvreg::machine
