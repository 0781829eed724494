// Text by its characters (code points): for rules that count, cut or compare. Where a rule looks
// for an ASCII character, the operations on bytes do: no other character has such a byte.
#ifndef ZELVREG_TEXT_CHARACTERS_H
#define ZELVREG_TEXT_CHARACTERS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace zelvreg {

std::size_t characterCount(std::string_view text);

// The first or the last `count` characters; the whole text if it has no more.
std::string_view firstCharacters(std::string_view text, std::size_t count);
std::string_view lastCharacters(std::string_view text, std::size_t count);

// The text behind its first `count` characters; the empty text if it has no more.
std::string_view behindCharacters(std::string_view text, std::size_t count);

// The text without its last `count` characters; the empty text if it has no more.
std::string_view withoutLast(std::string_view text, std::size_t count);

// The character with this index, from 0; NUL if the text is not that long.
char32_t characterAt(std::string_view text, std::size_t index);

// As much of the text's head as fits into this many bytes, no character cut in half.
std::string_view firstBytes(std::string_view text, std::size_t bytes);

// One element for each character.
std::u32string charactersOf(std::string_view text);

}  // namespace zelvreg

#endif
