// How JSON is handed to the library, which reads plain UTF-8 only: in its strings a NUL and four
// hexadecimal digits stand for an unpaired surrogate, or for a NUL itself.
#ifndef ZELVREG_JSON_JSON_PIECES_H
#define ZELVREG_JSON_JSON_PIECES_H

#include <cstddef>
#include <string>
#include <string_view>

namespace zelvreg {

// A text of JSON is cut into pieces of one character, or one escape, or two that are a pair.
struct JsonPiece {
  std::size_t size = 1;  // in bytes
  bool isStood = false;  // an escape for which something else stands
};
inline constexpr std::size_t longestPiece = 12;

// The piece that a text begins with. It must not be empty, and it must have longestPiece bytes or
// all that there are.
JsonPiece firstPiece(std::string_view json);

// Appends that piece as the library can read it.
void appendReadable(std::string& readable, std::string_view json, const JsonPiece& piece);

// The text that a string of the library means.
std::string withoutStands(std::string_view text);

}  // namespace zelvreg

#endif
