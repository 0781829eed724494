// The text of a file in the registry editor's export format, whichever encoding it has.
#ifndef ZELVREG_KEYS_REGISTRY_TEXT_DECODER_H
#define ZELVREG_KEYS_REGISTRY_TEXT_DECODER_H

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zelvreg {

// What is wrong with a file, and in which line, from 1.
struct RegistryTextFault {
  std::size_t line = 0;
  std::string what;
};

struct DecodedRegistryText {
  std::u16string text;                     // all lines, the header too
  std::size_t body = 0;                    // where the line behind the header begins
  bool isNarrow = false;                   // REGEDIT4: the bytes of texts are in the code page too
  std::optional<RegistryTextFault> fault;  // if there is one, the rest has no meaning
};

// UTF-16LE and UTF-8 with a byte order mark; without one "REGEDIT4" in the code page, and anything
// else in UTF-8.
DecodedRegistryText decodeRegistryText(std::string_view bytes);

// Narrow text, NULs included, of a code page; none if it holds what the page does not know.
std::optional<std::u16string> decodeNarrow(UINT codePage, std::string_view narrow);

}  // namespace zelvreg

#endif
