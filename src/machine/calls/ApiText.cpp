// The Windows calls between narrow and wide text. They work without a machine in force as well.
#include <windows.h>

#include <cstring>
#include <string>

#include "machine/Machine.h"
#include "machine/base/CodePage.h"
#include "machine/base/MachineError.h"
#include "machine/calls/ApiSupport.h"

namespace {

using namespace zelvreg::machine;

constexpr UINT pageWithoutMachine = 1252;

// The page that a call asks for by number; null for one that is not known.
const CodePage* pageOf(UINT number) {
  const Machine* machine = Machine::current();
  if (number == CP_ACP && machine != nullptr) return &machine->codePage();
  try {
    return &sharedCodePage(number == CP_ACP ? pageWithoutMachine : number);
  } catch (const MachineError&) {
    return nullptr;
  }
}

int refuse(LONG code) { return failed(code); }

// Gives a text by the size protocol of both calls: asked with no room, the size it needs.
template <typename Unit>
int giveUnits(const std::basic_string<Unit>& text, Unit* buffer, int size) {
  const auto length = static_cast<int>(text.size());
  if (size == 0) return length;
  if (length > size) return refuse(ERROR_INSUFFICIENT_BUFFER);
  std::memcpy(buffer, text.data(), text.size() * sizeof(Unit));
  return length;
}

// Whether a unit has no place in the page.
bool isMissing(const CodePage& page, char16_t unit) {
  return unit != u'?' && page.encode({&unit, 1}) == "?";
}

std::string encodeWith(const CodePage& page, std::u16string_view wide, LPCSTR defaultCharacter,
                       bool& usedDefault) {
  std::string narrow;
  for (const char16_t unit : wide) {
    const bool missing = isMissing(page, unit);
    usedDefault = usedDefault || missing;
    narrow += missing && defaultCharacter != nullptr ? std::string(1, *defaultCharacter)
                                                     : page.encode({&unit, 1});
  }
  return narrow;
}

}  // namespace

extern "C" {

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, LPWSTR wide,
                        int wideSize) {
  const CodePage* page = pageOf(codePage);
  const bool badText = text == nullptr || length == 0 || length < -1;
  if (page == nullptr || badText || wideSize < 0 || (wideSize > 0 && wide == nullptr)) {
    return refuse(ERROR_INVALID_PARAMETER);
  }
  // With -1 the text ends at its NUL, which is converted too.
  const std::size_t size = length == -1 ? std::strlen(text) + 1 : static_cast<std::size_t>(length);
  const std::string_view narrow(text, size);
  const std::u16string result = page->decode(narrow);
  if ((flags & MB_ERR_INVALID_CHARS) != 0 && page->encode(result) != narrow) {
    return refuse(ERROR_NO_UNICODE_TRANSLATION);
  }
  return giveUnits(result, wide, wideSize);
}

int WideCharToMultiByte(UINT codePage, DWORD, LPCWSTR wide, int wideLength, LPSTR text, int size,
                        LPCSTR defaultCharacter, LPBOOL usedDefault) {
  const CodePage* page = pageOf(codePage);
  const bool badText = wide == nullptr || wideLength == 0 || wideLength < -1;
  if (page == nullptr || badText || size < 0 || (size > 0 && text == nullptr)) {
    return refuse(ERROR_INVALID_PARAMETER);
  }
  const bool asksForDefault = defaultCharacter != nullptr || usedDefault != nullptr;
  if (asksForDefault && page->number() == CP_UTF8) return refuse(ERROR_INVALID_PARAMETER);
  std::u16string_view units(wide, static_cast<std::size_t>(wideLength < 0 ? 0 : wideLength));
  if (wideLength == -1) units = {wide, std::char_traits<char16_t>::length(wide) + 1};
  if (!asksForDefault) return giveUnits(page->encode(units), text, size);
  bool used = false;
  const std::string narrow = encodeWith(*page, units, defaultCharacter, used);
  if (usedDefault != nullptr) *usedDefault = used ? TRUE : FALSE;
  return giveUnits(narrow, text, size);
}
}
