#include "machine/CodePage.h"

#include <iconv.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <type_traits>

#include "machine/Machine.h"

namespace zelvreg::machine {

namespace {

constexpr unsigned utf8Page = 65001;
constexpr char16_t replacement = 0xFFFD;
constexpr char16_t noCharacter = 0xFFFF;

struct ByteRange {
  unsigned first;
  unsigned last;
};

// The first bytes of two-byte characters.
std::vector<ByteRange> leadRanges(unsigned page) {
  if (page == 932) return {{0x81, 0x9F}, {0xE0, 0xFC}};
  if (page == 936 || page == 949 || page == 950) return {{0x81, 0xFE}};
  return {};
}

bool isKnownPage(unsigned page) {
  return page == 874 || !leadRanges(page).empty() || (page >= 1250 && page <= 1258);
}

// One character at a time through the C library's own tables.
class Converter {
 public:
  explicit Converter(unsigned page)
      : handle(iconv_open("UTF-16LE", ("CP" + std::to_string(page)).c_str())) {
    if (!isOpen()) {
      throw MachineError("this system's iconv does not know code page " + std::to_string(page) +
                         "; install its character set tables");
    }
  }
  ~Converter() { iconv_close(handle); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // The one UTF-16 unit that the bytes stand for, or noCharacter.
  char16_t convert(std::string bytes) {
    std::array<char, 16> out{};
    char* in = bytes.data();
    char* outEnd = out.data();
    std::size_t inLeft = bytes.size();
    std::size_t outLeft = out.size();
    iconv(handle, nullptr, nullptr, nullptr, nullptr);
    const std::size_t result = iconv(handle, &in, &inLeft, &outEnd, &outLeft);
    if (result != 0 || inLeft != 0) return noCharacter;
    // Pages with combining marks hold a base letter back until they are flushed.
    iconv(handle, nullptr, nullptr, &outEnd, &outLeft);
    if (out.size() - outLeft != 2) return noCharacter;
    return static_cast<char16_t>(static_cast<unsigned char>(out[0]) |
                                 static_cast<unsigned char>(out[1]) << 8);
  }

 private:
  [[nodiscard]] bool isOpen() const { return reinterpret_cast<std::intptr_t>(handle) != -1; }
  iconv_t handle;
};

// A number of characters at the head of a text that are all below 0x80; looked for in blocks, which
// the compiler takes at once.
template <typename Unit>
std::size_t countPlain(std::basic_string_view<Unit> text) {
  constexpr std::size_t block = 16;
  std::size_t plain = 0;
  while (text.size() - plain >= block) {
    unsigned all = 0;
    for (std::size_t at = plain; at < plain + block; ++at) {
      all |= static_cast<std::make_unsigned_t<Unit>>(text[at]);
    }
    if (all >= 0x80) return plain;
    plain += block;
  }
  while (plain < text.size() && static_cast<std::make_unsigned_t<Unit>>(text[plain]) < 0x80)
    ++plain;
  return plain;
}

void appendUtf8(std::string& text, char32_t character) {
  const auto continuation = [&](unsigned shift) {
    text += static_cast<char>(0x80 | ((character >> shift) & 0x3F));
  };
  if (character < 0x80) {
    text += static_cast<char>(character);
  } else if (character < 0x800) {
    text += static_cast<char>(0xC0 | (character >> 6));
    continuation(0);
  } else if (character < 0x10000) {
    text += static_cast<char>(0xE0 | (character >> 12));
    continuation(6);
    continuation(0);
  } else {
    text += static_cast<char>(0xF0 | (character >> 18));
    continuation(12);
    continuation(6);
    continuation(0);
  }
}

// The length of the well-formed UTF-8 sequence at the head of `text`, its character in
// `character`; 0 if there is none. Overlong forms and surrogates are not well formed.
std::size_t leadingCharacter(std::string_view text, char32_t& character) {
  const auto byteAt = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned first = byteAt(0);
  const std::size_t length = first < 0x80 ? 1 : first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (length == 1) {
    character = first;
    return 1;
  }
  if (first < 0xC2 || first > 0xF4 || text.size() < length) return 0;
  character = first & (0x7FU >> length);
  for (std::size_t at = 1; at < length; ++at) {
    if ((byteAt(at) & 0xC0) != 0x80) return 0;
    character = character << 6 | (byteAt(at) & 0x3FU);
  }
  const bool overlong = character < (length == 2 ? 0x80U : length == 3 ? 0x800U : 0x10000U);
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  return overlong || surrogate || character > 0x10FFFF ? 0 : length;
}

}  // namespace

CodePage::CodePage(unsigned number) : pageNumber(number) {
  if (number == utf8Page) return;
  if (!isKnownPage(number)) {
    throw MachineError("code page " + std::to_string(number) +
                       " is not known; use one of 874, 932, 936, 949, 950, 1250 to 1258, 65001");
  }
  for (const ByteRange& range : leadRanges(number)) {
    for (unsigned byte = range.first; byte <= range.last; ++byte) isLeadByte[byte] = true;
  }
  const bool twoBytes = !leadRanges(number).empty();
  unicodeOf.assign(twoBytes ? 0x10000 : 0x100, u'?');
  bytesOf.assign(0x10000, 0);
  const auto learn = [this](unsigned bytes, char16_t unit) {
    unicodeOf[bytes] = unit;
    if (bytesOf[unit] == 0) bytesOf[unit] = static_cast<std::uint16_t>(bytes);
  };
  Converter converter(number);
  for (unsigned byte = 0; byte < 0x100; ++byte) {
    if (isLeadByte[byte]) continue;
    const char16_t unit = converter.convert({static_cast<char>(byte)});
    const bool asItsNumber = byte < 0x80 || unit == noCharacter;
    learn(byte, asItsNumber ? static_cast<char16_t>(byte) : unit);
  }
  if (!twoBytes) return;
  for (unsigned bytes = 0x8100; bytes < 0xFF00; ++bytes) {
    if (!isLeadByte[bytes >> 8]) continue;
    const char16_t unit =
        converter.convert({static_cast<char>(bytes >> 8), static_cast<char>(bytes & 0xFF)});
    if (unit != noCharacter) learn(bytes, unit);
  }
}

std::u16string CodePage::decode(std::string_view text) const {
  if (pageNumber == utf8Page) return utf16FromUtf8(text);
  std::u16string wide(text.size(), u'\0');
  // Plain characters are the same in every page.
  std::size_t length = countPlain(text);
  std::copy_n(text.begin(), length, wide.begin());
  for (std::size_t at = length; at < text.size(); ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (!isLeadByte[byte]) {
      wide[length++] = unicodeOf[byte];
      continue;
    }
    // A lead byte without its second one must not swallow the end of the text.
    const unsigned trail = at + 1 < text.size() ? static_cast<unsigned char>(text[at + 1]) : 0;
    wide[length++] = trail == 0 ? u'?' : unicodeOf[byte * 256U + trail];
    if (trail != 0) ++at;
  }
  wide.resize(length);
  return wide;
}

std::string CodePage::encode(std::u16string_view text) const {
  if (pageNumber == utf8Page) return utf8FromUtf16(text);
  const std::size_t plain = countPlain(text);
  std::string narrow(plain, '\0');
  std::transform(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(plain), narrow.begin(),
                 [](char16_t unit) { return static_cast<char>(unit); });
  for (const char16_t unit : text.substr(plain)) {
    const unsigned bytes = unit < 0x80 ? unit : bytesOf[unit];
    if (bytes > 0xFF) narrow += static_cast<char>(bytes >> 8);
    narrow += bytes == 0 && unit != 0 ? '?' : static_cast<char>(bytes & 0xFF);
  }
  return narrow;
}

const CodePage& sharedCodePage(unsigned number) {
  static std::mutex guard;
  static std::map<unsigned, CodePage> pages;
  const std::lock_guard<std::mutex> locked(guard);
  return pages.try_emplace(number, number).first->second;
}

std::u16string utf16FromUtf8(std::string_view text) {
  std::u16string wide;
  wide.reserve(text.size());
  while (!text.empty()) {
    char32_t character = 0;
    const std::size_t length = leadingCharacter(text, character);
    text.remove_prefix(length == 0 ? 1 : length);
    if (length == 0) {
      wide += replacement;
    } else if (character < 0x10000) {
      wide += static_cast<char16_t>(character);
    } else {
      wide += static_cast<char16_t>(0xD7C0 + (character >> 10));
      wide += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
    }
  }
  return wide;
}

std::string utf8FromUtf16(std::u16string_view text) {
  std::string narrow;
  narrow.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char32_t unit = text[at];
    const bool isHigh = unit >= 0xD800 && unit <= 0xDBFF;
    const char32_t next = isHigh && at + 1 < text.size() ? text[at + 1] : 0;
    if (next >= 0xDC00 && next <= 0xDFFF) {
      appendUtf8(narrow, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
      ++at;
    } else {
      appendUtf8(narrow, unit >= 0xD800 && unit <= 0xDFFF ? replacement : unit);
    }
  }
  return narrow;
}

}  // namespace zelvreg::machine
