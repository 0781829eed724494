#include "machine/base/CodePage.h"

#include <iconv.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <type_traits>

#include "machine/base/MachineError.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {

namespace {

constexpr unsigned utf8Page = 65001;
constexpr char16_t replacement = replacementCharacter;
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

// Other programs know no halves of characters, so what is converted for them has none either.
std::u16string decodePlainUtf8(std::string_view text) {
  if (isPlainUtf8(text)) return utf16(text);
  std::u16string wide;
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    const bool isCharacter = next.isWhole && !isSurrogate(next.code);
    const std::size_t size = isCharacter ? next.size : 1;
    wide += isCharacter ? utf16(text.substr(0, size)) : std::u16string(1, replacement);
    text.remove_prefix(size);
  }
  return wide;
}

std::string encodePlainUtf8(std::u16string_view text) {
  std::string narrow = utf8(text);
  if (isPlainUtf8(narrow)) return narrow;
  std::string plain;
  for (std::string_view rest = narrow; !rest.empty();) {
    const Utf8Character next = firstCharacter(rest);
    appendCharacter(plain, isSurrogate(next.code) ? replacement : next.code);
    rest.remove_prefix(next.size);
  }
  return plain;
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
  if (pageNumber == utf8Page) return decodePlainUtf8(text);
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
  if (pageNumber == utf8Page) return encodePlainUtf8(text);
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

}  // namespace zelvreg::machine
