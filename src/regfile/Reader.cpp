#include "regfile/Reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "roots/NameLimits.h"
#include "roots/ValueTypes.h"

namespace zelvreg::regfile {
namespace {

constexpr std::u16string_view blanks = u" \t";

constexpr bool isBlank(char16_t unit) { return unit == u' ' || unit == u'\t'; }

constexpr int noDigit = -1;
constexpr auto hexDigits = [] {
  std::array<std::int8_t, 0x80> digits{};
  digits.fill(noDigit);
  for (std::int8_t value = 0; value < 16; ++value) {
    for (const std::u16string_view letters : {u"0123456789abcdef", u"0123456789ABCDEF"}) {
      digits[letters[static_cast<std::size_t>(value)]] = value;
    }
  }
  return digits;
}();

int hexDigit(char16_t unit) { return unit < hexDigits.size() ? hexDigits[unit] : noDigit; }

char16_t lowerLetter(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

// Takes hexadecimal digits from the start of `text`, at most so many; how many there were.
std::size_t takeDigits(std::u16string_view& text, std::size_t most, std::uint32_t& number) {
  number = 0;
  std::size_t count = 0;
  for (; count < most && count < text.size() && hexDigit(text[count]) >= 0; ++count) {
    number = number * 16 + static_cast<std::uint32_t>(hexDigit(text[count]));
  }
  text.remove_prefix(count);
  return count;
}

bool takeByte(std::u16string_view& text, std::vector<std::byte>& bytes) {
  std::uint32_t number = 0;
  const bool isTaken = takeDigits(text, 2, number) > 0;
  bytes.push_back(static_cast<std::byte>(number));
  return isTaken;
}

// Takes bytes of two digits from the start of `text`, as long as a comma follows each.
void takePlainBytes(std::u16string_view& text, std::vector<std::byte>& bytes) {
  constexpr std::size_t unitsOfByte = 3;
  std::size_t taken = 0;
  for (; taken + unitsOfByte <= text.size() && text[taken + 2] == u','; taken += unitsOfByte) {
    const int high = hexDigit(text[taken]);
    const int low = hexDigit(text[taken + 1]);
    if (high < 0 || low < 0) {
      break;
    }
    bytes.push_back(static_cast<std::byte>(high * 16 + low));
  }
  text.remove_prefix(taken);
}

// How many units at the start of a line's rest are neither a quote nor a backslash. They are told
// in blocks, which the compiler takes at once; the last one may reach behind the line.
std::size_t plainLength(std::u16string_view rest) {
  static_assert(std::endian::native == std::endian::little, "the first unit is the lowest");
  using Block = std::array<char16_t, Lines::unitsBehind>;
  for (std::size_t length = 0; length < rest.size(); length += Block().size()) {
    Block units;
    std::memcpy(units.data(), rest.data() + length, sizeof units);
    for (char16_t& unit : units) {
      unit = unit == u'"' || unit == u'\\' ? 0xFFFF : 0;
    }
    const auto [low, high] = std::bit_cast<std::array<std::uint64_t, 2>>(units);
    if ((low | high) != 0) {
      const int zeroBits = low != 0 ? std::countr_zero(low) : 64 + std::countr_zero(high);
      return std::min(length + static_cast<std::size_t>(zeroBits) / 16, rest.size());
    }
  }
  return rest.size();
}

}  // namespace

std::optional<Fault> Reader::read(Receiver& receiver) {
  while (nextLine() && readStatement(receiver)) {
  }
  return lines.fault() ? lines.fault() : fault;
}

bool Reader::readStatement(Receiver& receiver) {
  firstLine = lines.number();
  skipBlanks();
  if (rest.empty()) {
    return true;
  }
  switch (rest.front()) {
    case u';':
      return accept(receiver.comment(rest.substr(0, rest.find_last_not_of(blanks) + 1)));
    case u'[':
      return readKey(receiver);
    case u'"':
    case u'@':
      return readValue(receiver);
    default:
      return fail("this is neither a key nor a value; a line begins with [, \", @ or ;");
  }
}

bool Reader::readKey(Receiver& receiver) {
  const std::size_t last = rest.find_last_not_of(blanks);
  if (rest[last] != u']') {
    return fail("the key is not closed; its line must end in ]");
  }
  std::u16string_view path = rest.substr(1, last - 1);
  if (!path.starts_with(u'-')) {
    return accept(receiver.makeKey(path));
  }
  path.remove_prefix(1);
  return accept(receiver.deleteKey(path));
}

bool Reader::readValue(Receiver& receiver) {
  name = {};
  std::u16string_view named;
  if (!skip(u'@') && !readQuoted(joinedName, named)) {
    return false;
  }
  name = named;
  if (name.size() > longestValueName) {
    return fail("the value's name is too long; it has at most 16383 characters");
  }
  skipBlanks();
  if (!skip(u'=')) {
    return fail("there is no = after the value's name");
  }
  skipBlanks();
  if (skip(u'-')) {
    return endValue() && accept(receiver.deleteValue(name));
  }
  return readData() && endValue() && accept(receiver.setValue(name, type, data));
}

bool Reader::endValue() {
  skipBlanks();
  return rest.empty() || rest.front() == u';' || fail("there is more after the data");
}

bool Reader::readData() {
  if (rest.starts_with(u'"')) {
    return readText();
  }
  if (skipInAnyCase(u"dword:")) {
    type = valueTypes::number;
    const bool isRead = readNumber(number);
    data = std::as_bytes(std::span(&number, 1));
    return isRead;
  }
  if (skipInAnyCase(u"hex:")) {
    type = valueTypes::binary;
    return readBytes();
  }
  if (skipInAnyCase(u"hex(")) {
    return readNumber(type) &&
           ((skip(u')') && skip(u':')) ||
            fail("the type is not closed; write hex(n): and bytes")) &&
           readBytes() && widenText();
  }
  return fail("the data are of no known kind; write \"text\", dword:, hex:, hex(n): or -");
}

bool Reader::readText() {
  std::u16string_view text;
  if (!readQuoted(joinedText, text)) {
    return false;
  }
  type = valueTypes::text;
  data = std::as_bytes(std::span(text.data(), text.size() + 1));
  return true;
}

// From the opening quote on. Line ends belong to the text. A NUL is put behind it.
bool Reader::readQuoted(std::u16string& joined, std::u16string_view& content) {
  bool isClosed = false;
  skip(u'"');
  if (!readQuotedPart(content, isClosed)) {
    return false;
  }
  if (!isClosed) {
    joined = content;
    while (!isClosed) {
      joined += lines.ending();
      if (!goOnInNextLine()) {
        return failAtStart("the text has no closing quote");
      }
      if (!readQuotedPart(content, isClosed)) {
        return false;
      }
      joined += content;
    }
    content = joined;
  }
  return nuls == Nuls::Taken || content.find(u'\0') == std::u16string::npos ||
         fail("the text holds a NUL character");
}

// Up to the closing quote or the end of the line. A backslash before a character goes, so that the
// text closes up in the line itself.
bool Reader::readQuotedPart(std::u16string_view& part, bool& isClosed) {
  char16_t* const begin = lines.text().data() + (lines.text().size() - rest.size());
  char16_t* end = begin;
  while (true) {
    const std::size_t length = plainLength(rest);
    if (end != rest.data()) {
      std::u16string_view::traits_type::move(end, rest.data(), length);
    }
    end += length;
    rest.remove_prefix(length);
    isClosed = skip(u'"');
    if (isClosed || rest.empty()) {
      *end = u'\0';
      part = {begin, end};
      return true;
    }
    skip(u'\\');
    if (!rest.starts_with(u'\\') && !rest.starts_with(u'"')) {
      return fail("a backslash stands alone; write \\\\ for a backslash and \\\" for a quote");
    }
    *end++ = rest.front();
    rest.remove_prefix(1);
  }
}

bool Reader::readNumber(std::uint32_t& number) {
  constexpr std::size_t mostDigits = 8;
  const bool hasDigits = takeDigits(rest, mostDigits, number) > 0;
  const bool goesOn = !rest.empty() && hexDigit(rest.front()) >= 0;
  return (hasDigits && !goesOn) ||
         fail("the number is not valid; it has one to eight hexadecimal digits");
}

// Bytes with commas between them, or none. A backslash at the end of a line goes on in the next.
bool Reader::readBytes() {
  bytes.clear();
  data = {};
  if (!skipToByte()) {
    return false;
  }
  if (rest.empty() || rest.front() == u';') {
    return true;
  }
  do {
    if (!skipToByte()) {
      return false;
    }
    takePlainBytes(rest, bytes);
    if (!skipToByte()) {
      return false;
    }
    if (!takeByte(rest, bytes)) {
      return fail("a byte is missing or wrong; write two hexadecimal digits");
    }
    if (!skipToByte()) {
      return false;
    }
  } while (skip(u','));
  data = bytes;
  return true;
}

bool Reader::skipToByte() {
  skipBlanks();
  while (skip(u'\\')) {
    skipBlanks();
    if (!rest.empty()) {
      return fail("a backslash among the bytes; it may only end a line");
    }
    if (!goOnInNextLine()) {
      return failAtStart("the bytes break off; a line must follow the backslash");
    }
    skipBlanks();
  }
  return true;
}

// In REGEDIT4 text is narrow in its hexadecimal form too.
bool Reader::widenText() {
  if (form().encoding != Form::Encoding::Regedit4 || !isText(type)) {
    return true;
  }
  auto wide = decodeNarrow({reinterpret_cast<const char*>(data.data()), data.size()});
  if (!wide) {
    return fail("the bytes are no text of the code page");
  }
  joinedText = *std::move(wide);
  data = std::as_bytes(std::span(joinedText));
  return true;
}

bool Reader::nextLine() {
  const bool hasLine = lines.next();
  const std::span<const char16_t> line = lines.text();
  rest = {line.data(), hasLine ? line.size() : 0};
  return hasLine;
}

// The name that was read lies in the line that gives way.
bool Reader::goOnInNextLine() {
  if (!name.empty() && name.data() != joinedName.data()) {
    joinedName = name;
    name = joinedName;
  }
  return nextLine();
}

void Reader::skipBlanks() {
  while (!rest.empty() && isBlank(rest.front())) {
    rest.remove_prefix(1);
  }
}

bool Reader::skip(char16_t unit) {
  if (!rest.starts_with(unit)) {
    return false;
  }
  rest.remove_prefix(1);
  return true;
}

bool Reader::skipInAnyCase(std::u16string_view word) {
  const std::u16string_view start = rest.substr(0, word.size());
  if (!std::ranges::equal(start, word, {}, lowerLetter)) {
    return false;
  }
  rest.remove_prefix(word.size());
  return true;
}

bool Reader::accept(Receiver::Objection objection) {
  return objection.empty() || failAtStart(objection);
}

bool Reader::fail(std::string_view what) {
  fault = {lines.number(), std::string(what)};
  return false;
}

bool Reader::failAtStart(std::string_view what) {
  fault = {firstLine, std::string(what)};
  return false;
}

bool readByteList(std::u16string_view text, std::vector<std::byte>& bytes) {
  while (takeByte(text, bytes)) {
    if (text.empty()) {
      return true;
    }
    if (!text.starts_with(u',')) {
      return false;
    }
    text.remove_prefix(1);
  }
  return false;
}

}  // namespace zelvreg::regfile
