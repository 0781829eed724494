// Converts between the program's text, UTF-8, and the system's, UTF-16.
//
// Names of the registry and of files may hold any UTF-16 units, unpaired surrogates too. So UTF-8
// here is the wider form that writes such a surrogate as a character of three bytes (WTF-8,
// simonsapin.github.io/wtf-8): every name survives the conversion there and back.
//
// Sizes of std::string are bytes, sizes of std::u16string are UTF-16 units. A returned text belongs
// to the caller. Any bytes are accepted; nothing fails but for lack of memory.
#ifndef ZELVREG_UNICODE_UNICODE_H
#define ZELVREG_UNICODE_UNICODE_H

#include <cstddef>
#include <string>
#include <string_view>

namespace zelvreg {

// Stands for a byte that is part of no character.
inline constexpr char32_t replacementCharacter = 0xFFFD;

// Two units of UTF-16, a high surrogate and a low one, make one character; either alone makes none.
constexpr bool isHighSurrogate(char32_t code) { return code >= 0xD800 && code <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t code) { return code >= 0xDC00 && code <= 0xDFFF; }
constexpr bool isSurrogate(char32_t code) { return isHighSurrogate(code) || isLowSurrogate(code); }

// Whether the unit at this index and the next one make a character.
constexpr bool isPairAt(std::u16string_view text, std::size_t index) {
  return isHighSurrogate(text[index]) && index + 1 < text.size() && isLowSurrogate(text[index + 1]);
}

// Where a unit stands first in a text, from an index on; the text's size if it does not.
std::size_t findUnit(std::u16string_view text, char16_t unit, std::size_t from = 0);

// The text before its first NUL.
inline std::u16string_view untilNul(std::u16string_view text) {
  return text.substr(0, findUnit(text, u'\0'));
}

// One character of a UTF-8 text, and how many bytes it takes there.
struct Utf8Character {
  char32_t code = replacementCharacter;
  std::size_t size = 1;
  bool isWhole = false;  // false for a byte that is part of no character
};

// The first character of a text, which must not be empty. A lone surrogate counts as a character. A
// character that is written with more bytes than it needs does not.
Utf8Character firstCharacter(std::string_view text);

// Appends a character, or a lone surrogate, to a text.
void appendCharacter(std::string& text, char32_t code);

// Each byte that is part of no character becomes the replacement character.
std::u16string utf16(std::string_view text);

// Without loss. Nothing is cut: NUL is a character like any other.
std::string utf8(std::u16string_view text);

// The same at the end of a text. A high surrogate there and a low one that is appended stay two
// characters.
void appendUtf8(std::string& narrow, std::u16string_view text);

// Like utf16(), into memory of the caller, which must have room for as many units as the text has
// bytes. Returns how many units were written; no NUL is added.
std::size_t utf16Into(char16_t* units, std::string_view text);

// Copies the ASCII at the start of a text, into memory of the caller, which must have room for as
// many units as the text has bytes. Returns how many there are.
std::size_t asciiInto(char16_t* units, std::string_view text);

// Whether a text is plain UTF-8, as other programs read it: every byte is part of a character, and
// no character is a lone surrogate.
bool isPlainUtf8(std::string_view text);

// How many bytes at the start of a text are ASCII.
std::size_t asciiLength(std::string_view text);

}  // namespace zelvreg

#endif
