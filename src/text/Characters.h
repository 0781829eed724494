// Text by its characters (code points): for rules that count, cut or compare. To look for an ASCII
// character, use the operations on bytes: no other character has such a byte.
//
// Counts and indexes are in characters unless it says bytes. A byte that is part of no character
// counts as one. A returned view points into the text that was given, and lives as long as that.
// Nothing here fails.
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

// The text after its first `count` characters; the empty text if it has no more.
std::string_view afterCharacters(std::string_view text, std::size_t count);

// The text without its last `count` characters; the empty text if it has no more.
std::string_view withoutLast(std::string_view text, std::size_t count);

// The character with this index, from 0; NUL if the text is not that long.
char32_t characterAt(std::string_view text, std::size_t index);

// The longest start of the text that fits into this many bytes, without cutting a character.
std::string_view firstBytes(std::string_view text, std::size_t bytes);

// One element for each character; the replacement character for a byte that is part of none.
std::u32string charactersOf(std::string_view text);

}  // namespace zelvreg

#endif
