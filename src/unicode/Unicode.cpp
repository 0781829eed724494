#include "unicode/Unicode.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
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

// ASCII is told and copied in blocks, which the compiler takes at once.
constexpr std::size_t block = 8;
constexpr std::size_t largeBlock = 16;

template <std::size_t size, typename Unit>
bool isPlainBlock(const Unit* units) {
  constexpr std::uint64_t beyondAscii =
      sizeof(Unit) == 1 ? 0x8080'8080'8080'8080 : 0xFF80'FF80'FF80'FF80;
  std::array<std::uint64_t, size * sizeof(Unit) / sizeof(std::uint64_t)> words{};
  std::memcpy(words.data(), units, sizeof words);
  std::uint64_t all = 0;
  for (const std::uint64_t word : words) {
    all |= word;
  }
  return (all & beyondAscii) == 0;
}

template <std::size_t size, typename To, typename From>
bool copyPlainBlock(To* __restrict to, const From* __restrict from) {
  const bool isPlain = isPlainBlock<size>(from);
  if (isPlain) {
    for (std::size_t at = 0; at < size; ++at) {
      to[at] = static_cast<To>(static_cast<std::make_unsigned_t<From>>(from[at]));
    }
  }
  return isPlain;
}

// What is left at the end is copied with some of what was copied before.
template <std::size_t size, typename To, typename From>
std::size_t copyPlainBlocks(To* to, std::basic_string_view<From> from) {
  std::size_t copied = 0;
  while (copied + size <= from.size() && copyPlainBlock<size>(to + copied, from.data() + copied)) {
    copied += size;
  }
  const std::size_t last = from.size() - size;
  const bool hasRest = copied > last && copied < from.size();
  return hasRest && copyPlainBlock<size>(to + last, from.data() + last) ? from.size() : copied;
}

// Copies units from the head of a text as long as they are ASCII. How many there are.
template <typename To, typename From>
std::size_t copyPlain(To* to, std::basic_string_view<From> from) {
  std::size_t copied = from.size() >= largeBlock ? copyPlainBlocks<largeBlock>(to, from)
                       : from.size() >= block    ? copyPlainBlocks<block>(to, from)
                                                 : 0;
  while (copied < from.size() && static_cast<std::make_unsigned_t<From>>(from[copied]) < 0x80) {
    to[copied] = static_cast<To>(from[copied]);
    ++copied;
  }
  return copied;
}

}  // namespace

std::size_t findUnit(std::u16string_view text, char16_t unit, std::size_t from) {
  std::size_t index = from;
  for (; index + block <= text.size(); index += block) {
    // Without a way out of it, so that all are compared at once.
    bool isHere = false;
    for (std::size_t next = index; next < index + block; ++next) {
      isHere |= text[next] == unit;
    }
    if (isHere) {
      break;
    }
  }
  while (index < text.size() && text[index] != unit) {
    ++index;
  }
  return index;
}

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
  while (length + block <= text.size() && isPlainBlock<block>(text.data() + length)) {
    length += block;
  }
  while (length < text.size() && byteAt(text, length) < 0x80) {
    ++length;
  }
  return length;
}

std::size_t asciiInto(char16_t* units, std::string_view text) { return copyPlain(units, text); }

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
  std::string narrow;
  appendUtf8(narrow, text);
  return narrow;
}

void appendUtf8(std::string& narrow, std::u16string_view text) {
  const std::size_t start = narrow.size();
  narrow.resize(start + text.size());
  const std::size_t plain = copyPlain(narrow.data() + start, text);
  narrow.resize(start + plain);
  for (std::size_t at = plain; at < text.size(); ++at) {
    char32_t code = text[at];
    if (isPairAt(text, at)) {
      code = firstSupplementary + ((code - firstHigh) << 10U) + (text[++at] - firstLow);
    }
    appendCharacter(narrow, code);
  }
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
