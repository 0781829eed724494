#include <windows.h>
// After windows.h, whose types it needs.
#include <winternl.h>

#include <algorithm>
#include <array>
#include <functional>
#include <vector>

#include "soak/Footprint.h"

namespace zelvreg::fixture {
namespace {

std::size_t heapBytes() {
  const HANDLE heap = GetProcessHeap();
  std::size_t bytes = 0;
  HeapLock(heap);
  PROCESS_HEAP_ENTRY entry{};
  while (HeapWalk(heap, &entry) != 0) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
      bytes += entry.cbData;
    }
  }
  HeapUnlock(heap);
  return bytes;
}

// What the system tells of a handle of any process.
struct SystemHandle {
  USHORT process;
  USHORT traces;
  UCHAR type;
  UCHAR attributes;
  USHORT value;
  PVOID object;
  ULONG access;
};

std::size_t handlesOfProcess() {
  constexpr auto allHandles = static_cast<SYSTEM_INFORMATION_CLASS>(16);
  std::vector<BYTE> answer(1 << 16);
  while (NtQuerySystemInformation(allHandles, answer.data(), static_cast<ULONG>(answer.size()),
                                  nullptr) != 0) {
    answer.resize(answer.size() * 2);
  }
  const auto count = *reinterpret_cast<const ULONG*>(answer.data());
  const auto* handles = reinterpret_cast<const SystemHandle*>(answer.data() + sizeof(void*));
  const auto own = static_cast<USHORT>(GetCurrentProcessId());
  return static_cast<std::size_t>(std::count_if(
      handles, handles + count, [own](const SystemHandle& one) { return one.process == own; }));
}

// Wine counts no objects of the graphics system, but gives new ones the first free places of their
// table: with each that is left behind, these lie further up.
template <typename Handle>
std::size_t placeOfNew(const std::function<Handle()>& make,
                       const std::function<void(Handle)>& remove) {
  std::array<Handle, 300> made{};
  std::size_t highest = 0;
  for (Handle& one : made) {
    one = make();
    highest = std::max<std::size_t>(highest, LOWORD(reinterpret_cast<ULONG_PTR>(one)));
  }
  std::for_each(made.rbegin(), made.rend(), remove);
  return highest;
}

std::size_t drawingObjects() {
  const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
  return counted != 0 ? counted
                      : placeOfNew<HBRUSH>([] { return CreateSolidBrush(RGB(1, 2, 3)); },
                                           [](HBRUSH brush) { DeleteObject(brush); });
}

std::size_t windowObjects() {
  const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
  return counted != 0 ? counted
                      : placeOfNew<HMENU>([] { return CreateMenu(); },
                                          [](HMENU menu) { DestroyMenu(menu); });
}

}  // namespace

Footprint footprintNow() {
  return {.heapBytes = heapBytes(),
          .handles = handlesOfProcess(),
          .drawingObjects = drawingObjects(),
          .windowObjects = windowObjects()};
}

}  // namespace zelvreg::fixture
