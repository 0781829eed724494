#include "keys/ComSupport.h"

#include "unicode/Unicode.h"

namespace zelvreg {

std::wstring comText(std::string_view text) {
  const std::u16string units = utf16(text);
  return {reinterpret_cast<const wchar_t*>(units.data()), units.size()};
}

std::string textOf(const BSTR& text) {
  return utf8({reinterpret_cast<const char16_t*>(text), SysStringLen(text)});
}

}  // namespace zelvreg
