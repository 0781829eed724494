#include "machine/calls/ApiSupport.h"

#include <algorithm>

#include "machine/Machine.h"

namespace zelvreg::machine {

BOOL failed(LONG code) {
  SetLastError(static_cast<DWORD>(code));
  return FALSE;
}

Machine* machineInForce() {
  Machine* machine = Machine::current();
  if (machine == nullptr) failed(ERROR_NOT_READY);
  return machine;
}

HANDLE processTokenHandle() { return reinterpret_cast<HANDLE>(std::intptr_t{-4}); }

DWORD giveText(std::u16string_view text, LPWSTR buffer, DWORD size) {
  const auto needed = static_cast<DWORD>(text.size() + 1);
  if (buffer == nullptr || size < needed) return needed;
  std::ranges::copy(text, buffer);
  buffer[text.size()] = u'\0';
  return needed - 1;
}

}  // namespace zelvreg::machine
