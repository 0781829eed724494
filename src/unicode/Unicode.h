// Text of the program and of the system: UTF-8 here, UTF-16 there.
//
// Names of the registry and of files are any UTF-16 units, also halves of a surrogate pair without
// the other half. So UTF-8 is the wider form of it that writes such a half as a character of three
// bytes (WTF-8, simonsapin.github.io/wtf-8): every name survives the way there and back.
#ifndef ZELVREG_UNICODE_UNICODE_H
#define ZELVREG_UNICODE_UNICODE_H

#include <cstddef>
#include <string>
#include <string_view>

namespace zelvreg {

// What stands for a byte that is part of no character.
inline constexpr char32_t replacementCharacter = 0xFFFD;

// One character of a UTF-8 text and the bytes that it takes there.
struct Utf8Character {
  char32_t code = replacementCharacter;
  std::size_t size = 1;
  bool isWhole = false;  // false for a byte that is part of no character
};

// The first character of a text that is not empty. A longer form than a character needs is none, a
// lone surrogate is one.
Utf8Character firstCharacter(std::string_view text);

// A character, or a lone surrogate, behind a text.
void appendCharacter(std::string& text, char32_t code);

// Bytes that are part of no character become the replacement character.
std::u16string utf16(std::string_view text);

// Without loss. Nothing is cut: NULs are characters like any.
std::string utf8(std::u16string_view text);

// The same into memory of the caller, who has room for as many units as the text has bytes. How
// many units there are.
std::size_t utf16Into(char16_t* units, std::string_view text);

// Whether a text is plain UTF-8, as other programs read it: every byte is part of a character, and
// no character is a lone surrogate.
bool isPlainUtf8(std::string_view text);

// How many bytes at the head of a text are ASCII.
std::size_t asciiLength(std::string_view text);

}  // namespace zelvreg

#endif
