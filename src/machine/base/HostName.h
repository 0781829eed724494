// Text of this system, where it may be any bytes: names of files, lines of a machine folder's
// files.
#ifndef ZELVREG_MACHINE_BASE_HOST_NAME_H
#define ZELVREG_MACHINE_BASE_HOST_NAME_H

#include <optional>
#include <string>
#include <string_view>

#include "unicode/Unicode.h"

namespace zelvreg::machine {

// Whether bytes are the UTF-8 of one text, in which halves of characters are no fault.
inline bool isUtf8(std::string_view bytes) {
  return asciiLength(bytes) == bytes.size() || utf8(utf16(bytes)) == bytes;
}

// The name that a file has for Windows. None for other bytes: read as well as they can be, they
// would stand for another file's.
inline std::optional<std::u16string> windowsName(std::string_view hostName) {
  return isUtf8(hostName) ? std::optional(utf16(hostName)) : std::nullopt;
}

}  // namespace zelvreg::machine

#endif
