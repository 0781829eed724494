// The Windows calls that change the case of narrow text in its buffer.
#include <windows.h>

#include <cstring>
#include <string>

#include "machine/ApiSupport.h"
#include "machine/CaseFold.h"
#include "machine/CodePage.h"
#include "machine/Machine.h"

namespace {

using namespace zelvreg::machine;

// The buffer keeps its length: a letter whose other case the page does not have stays.
DWORD changeCase(LPSTR text, DWORD size, char16_t (*change)(char16_t)) {
  const Machine* machine = machineInForce();
  const CodePage& page = machine != nullptr ? machine->codePage() : sharedCodePage(1252);
  std::u16string wide = page.decode({text, size});
  for (char16_t& unit : wide) {
    const char16_t changed = change(unit);
    if (changed != unit && page.encode({&changed, 1}) != "?") {
      unit = changed;
    }
  }
  const std::string narrow = page.encode(wide);
  if (narrow.size() == size) {
    std::memcpy(text, narrow.data(), size);
  }
  return size;
}

}  // namespace

extern "C" {

DWORD CharLowerBuffA(LPSTR text, DWORD size) { return changeCase(text, size, lowerCase); }

DWORD CharUpperBuffA(LPSTR text, DWORD size) { return changeCase(text, size, upperCase); }
}
