// The Windows calls that change the case of text in its buffer. They work without a machine in
// force as well.
#include <windows.h>

#include <algorithm>

#include "machine/base/CaseFold.h"

namespace {

// One unit for one unit.
DWORD changeCase(LPWSTR text, DWORD size, char16_t (*change)(char16_t)) {
  std::transform(text, text + size, text, change);
  return size;
}

}  // namespace

extern "C" {

DWORD CharLowerBuffW(LPWSTR text, DWORD size) {
  return changeCase(text, size, zelvreg::machine::lowerCase);
}

DWORD CharUpperBuffW(LPWSTR text, DWORD size) {
  return changeCase(text, size, zelvreg::machine::upperCase);
}
}
