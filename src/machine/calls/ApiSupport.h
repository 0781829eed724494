// What the files that answer the Windows calls share.
#ifndef ZELVREG_MACHINE_CALLS_API_SUPPORT_H
#define ZELVREG_MACHINE_CALLS_API_SUPPORT_H

#include <windows.h>

#include <string>
#include <string_view>

namespace zelvreg::machine {

class Machine;

// Sets the last error and gives FALSE: `return failed(ERROR_ACCESS_DENIED);`.
BOOL failed(LONG code);

// The machine in force; without one the last error is ERROR_NOT_READY.
Machine* machineInForce();

// The stand-in handle of the process's token, which needs no closing.
HANDLE processTokenHandle();

// Text of a call; the empty text for a null pointer.
inline std::u16string_view textOf(LPCWSTR text) {
  if (text == nullptr) return {};
  // Almost every call has one to measure, so four units are looked at in each turn.
  const char16_t* end = text;
  while (true) {
    if (end[0] == u'\0') return {text, end};
    if (end[1] == u'\0') return {text, end + 1};
    if (end[2] == u'\0') return {text, end + 2};
    if (end[3] == u'\0') return {text, end + 3};
    end += 4;
  }
}

// Copies `text` and its NUL into a buffer of `size` units if it is large enough. The length without
// the NUL then, else the size needed with it, as most calls that give text answer.
DWORD giveText(std::u16string_view text, LPWSTR buffer, DWORD size);

}  // namespace zelvreg::machine

#endif
