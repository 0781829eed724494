#include "unicode/Unicode.h"

#include <algorithm>
#include <array>
#include <type_traits>

namespace zelvreg {
namespace {

constexpr char32_t firstHigh = 0xD800;
constexpr char32_t firstLow = 0xDC00;
constexpr char32_t firstSupplementary = 0x10000;
constexpr char32_t lastCharacter = 0x10FFFF;

unsigned byteAt(std::string_view text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

// How many bytes a character takes that begins with this byte; 0 for one that begins none.
std::size_t sizeBy(unsigned first) {
  if (first < 0x80) return 1;
  if (first < 0xC2 || first > 0xF4) return 0;
  return first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
}

// ASCII is told and copied in blocks, which the compiler takes at once; nearly all text is short.
constexpr std::size_t block = 8;

template <typename Unit>
bool isPlainBlock(const Unit* units) {
  std::make_unsigned_t<Unit> all = 0;
  for (std::size_t at = 0; at < block; ++at) {
    all |= static_cast<std::make_unsigned_t<Unit>>(units[at]);
  }
  return all < 0x80;
}

// Copies units from the head of a text as long as they are ASCII. How many there are.
template <typename To, typename From>
std::size_t copyPlain(To* to, std::basic_string_view<From> from) {
  const auto copyBlock = [&](std::size_t at) {
    const bool isPlain = isPlainBlock(from.data() + at);
    if (isPlain) {
      std::copy_n(from.data() + at, block, to + at);
    }
    return isPlain;
  };
  std::size_t size = 0;
  while (size + block <= from.size() && copyBlock(size)) {
    size += block;
  }
  // What is left at the end is copied with some of what was copied before.
  const bool hasRest = size < from.size() && from.size() < size + block && from.size() >= block;
  if (hasRest && copyBlock(from.size() - block)) {
    return from.size();
  }
  while (size < from.size() && static_cast<std::make_unsigned_t<From>>(from[size]) < 0x80) {
    to[size] = static_cast<To>(from[size]);
    ++size;
  }
  return size;
}

}  // namespace

Utf8Character firstCharacter(std::string_view text) {
  constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, firstSupplementary};
  const unsigned first = byteAt(text, 0);
  const std::size_t size = sizeBy(first);
  if (size == 1) {
    return {first, 1, true};
  }
  if (size == 0 || text.size() < size) {
    return {};
  }
  char32_t code = first & (0x7FU >> size);
  for (std::size_t at = 1; at < size; ++at) {
    const unsigned byte = byteAt(text, at);
    if ((byte & 0xC0U) != 0x80U) {
      return {};
    }
    code = code << 6U | (byte & 0x3FU);
  }
  return code < smallest[size] || code > lastCharacter ? Utf8Character{}
                                                       : Utf8Character{code, size, true};
}

void appendCharacter(std::string& text, char32_t code) {
  const auto append = [&](char32_t byte) { text += static_cast<char>(byte); };
  const auto appendRest = [&](unsigned shift) { append(0x80U | ((code >> shift) & 0x3FU)); };
  if (code < 0x80) {
    append(code);
  } else if (code < 0x800) {
    append(0xC0U | code >> 6U);
    appendRest(0);
  } else if (code < firstSupplementary) {
    append(0xE0U | code >> 12U);
    appendRest(6);
    appendRest(0);
  } else {
    append(0xF0U | code >> 18U);
    appendRest(12);
    appendRest(6);
    appendRest(0);
  }
}

std::size_t asciiLength(std::string_view text) {
  std::size_t length = 0;
  while (length + block <= text.size() && isPlainBlock(text.data() + length)) {
    length += block;
  }
  while (length < text.size() && byteAt(text, length) < 0x80) {
    ++length;
  }
  return length;
}

std::size_t utf16Into(char16_t* units, std::string_view text) {
  std::size_t size = copyPlain(units, text);
  text.remove_prefix(size);
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    if (next.code < firstSupplementary) {
      units[size++] = static_cast<char16_t>(next.code);
    } else {
      units[size++] = static_cast<char16_t>(firstHigh + ((next.code - firstSupplementary) >> 10U));
      units[size++] = static_cast<char16_t>(firstLow + (next.code & 0x3FFU));
    }
    text.remove_prefix(next.size);
  }
  return size;
}

std::u16string utf16(std::string_view text) {
  std::u16string wide(text.size(), u'\0');
  wide.resize(utf16Into(wide.data(), text));
  return wide;
}

std::string utf8(std::u16string_view text) {
  std::string narrow(text.size(), '\0');
  const std::size_t plain = copyPlain(narrow.data(), text);
  narrow.resize(plain);
  for (std::size_t at = plain; at < text.size(); ++at) {
    char32_t code = text[at];
    if (isPairAt(text, at)) {
      code = firstSupplementary + ((code - firstHigh) << 10U) + (text[++at] - firstLow);
    }
    appendCharacter(narrow, code);
  }
  return narrow;
}

bool isPlainUtf8(std::string_view text) {
  text.remove_prefix(asciiLength(text));
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    if (!next.isWhole || isSurrogate(next.code)) {
      return false;
    }
    text.remove_prefix(next.size);
  }
  return true;
}

}  // namespace zelvreg
