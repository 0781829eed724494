#include "regfile/Reader.h"

#include <algorithm>

#include "roots/NameLimits.h"
#include "roots/ValueTypes.h"

namespace zelvreg::regfile {
namespace {

constexpr std::u16string_view blanks = u" \t";

int hexDigit(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') {
    return unit - u'0';
  }
  const auto lower = static_cast<char16_t>(unit | 0x20);
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

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

void assignUnits(std::vector<std::byte>& data, std::u16string_view units) {
  const auto bytes = std::as_bytes(std::span(units));
  data.assign(bytes.begin(), bytes.end());
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
  name.clear();
  if (!skip(u"@") && !readQuoted(name)) {
    return false;
  }
  if (name.size() > longestValueName) {
    return fail("the value's name is too long; it has at most 16383 characters");
  }
  skipBlanks();
  if (!skip(u"=")) {
    return fail("there is no = after the value's name");
  }
  skipBlanks();
  if (skip(u"-")) {
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
    std::uint32_t number = 0;
    type = valueTypes::number;
    const bool isRead = readNumber(number);
    const auto bytes = std::as_bytes(std::span(&number, 1));
    data.assign(bytes.begin(), bytes.end());
    return isRead;
  }
  if (skipInAnyCase(u"hex:")) {
    type = valueTypes::binary;
    return readBytes();
  }
  if (skipInAnyCase(u"hex(")) {
    return readNumber(type) &&
           (skip(u"):") || fail("the type is not closed; write hex(n): and bytes")) &&
           readBytes() && widenText();
  }
  return fail("the data are of no known kind; write \"text\", dword:, hex:, hex(n): or -");
}

bool Reader::readText() {
  text.clear();
  const bool isRead = readQuoted(text);
  type = valueTypes::text;
  assignUnits(data, text += u'\0');
  return isRead;
}

// From the opening quote on. Line ends belong to the text.
bool Reader::readQuoted(std::u16string& content) {
  skip(u"\"");
  while (true) {
    const std::size_t end = std::min(rest.find_first_of(u"\"\\"), rest.size());
    content += rest.substr(0, end);
    rest.remove_prefix(end);
    if (skip(u"\"")) {
      return nuls == Nuls::Taken || content.find(u'\0') == std::u16string::npos ||
             fail("the text holds a NUL character");
    }
    if (rest.empty()) {
      content += lines.ending();
      if (!nextLine()) {
        return failAtStart("the text has no closing quote");
      }
      continue;
    }
    skip(u"\\");
    if (!rest.starts_with(u'\\') && !rest.starts_with(u'"')) {
      return fail("a backslash stands alone; write \\\\ for a backslash and \\\" for a quote");
    }
    content += rest.front();
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
  data.clear();
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
    if (!takeByte(rest, data)) {
      return fail("a byte is missing or wrong; write two hexadecimal digits");
    }
    if (!skipToByte()) {
      return false;
    }
  } while (skip(u","));
  return true;
}

bool Reader::skipToByte() {
  skipBlanks();
  while (skip(u"\\")) {
    skipBlanks();
    if (!rest.empty()) {
      return fail("a backslash among the bytes; it may only end a line");
    }
    if (!nextLine()) {
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
  const auto wide = decodeNarrow({reinterpret_cast<const char*>(data.data()), data.size()});
  if (!wide) {
    return fail("the bytes are no text of the code page");
  }
  assignUnits(data, *wide);
  return true;
}

bool Reader::nextLine() {
  const bool hasLine = lines.next();
  rest = hasLine ? lines.text() : std::u16string_view();
  return hasLine;
}

void Reader::skipBlanks() {
  rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
}

bool Reader::skip(std::u16string_view word) {
  if (!rest.starts_with(word)) {
    return false;
  }
  rest.remove_prefix(word.size());
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
