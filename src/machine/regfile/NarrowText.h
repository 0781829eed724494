// The code page of a REGEDIT4 file, whatever that of the emulated computer is.
#ifndef ZELVREG_MACHINE_REGFILE_NARROW_TEXT_H
#define ZELVREG_MACHINE_REGFILE_NARROW_TEXT_H

#include <optional>
#include <string>
#include <string_view>

#include "machine/base/CodePage.h"

namespace zelvreg::machine {

inline constexpr unsigned regedit4CodePage = 1252;

// Each byte has a meaning there.
inline std::optional<std::u16string> decodeNarrow(std::string_view narrow) {
  return sharedCodePage(regedit4CodePage).decode(narrow);
}
inline std::string encodeNarrow(std::u16string_view text) {
  return sharedCodePage(regedit4CodePage).encode(text);
}

}  // namespace zelvreg::machine

#endif
