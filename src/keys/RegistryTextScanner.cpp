#include "keys/RegistryTextScanner.h"

#include <algorithm>

namespace zelvreg {
namespace {

constexpr std::u16string_view blanks = u" \t";

int hexDigit(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') {
    return unit - u'0';
  }
  const auto lower = static_cast<char16_t>(unit | 0x20);
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

}  // namespace

void RegistryTextScanner::beginStatement() {
  firstLine = line;
  skipBlanks();
}

bool RegistryTextScanner::fail(const char* what) {
  noted = {firstLine, what};
  return false;
}

void RegistryTextScanner::skipBlanks() {
  rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
}

bool RegistryTextScanner::skip(std::u16string_view word) {
  if (!rest.starts_with(word)) {
    return false;
  }
  rest.remove_prefix(word.size());
  return true;
}

bool RegistryTextScanner::skipLineEnd() {
  if (!skip(u"\r\n") && !skip(u"\n")) {
    return false;
  }
  ++line;
  return true;
}

std::u16string_view RegistryTextScanner::takeLine() {
  const std::size_t end = std::min(rest.find(u'\n'), rest.size());
  std::u16string_view text = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  ++line;
  return text.substr(0, text.find_last_not_of(u" \t\r") + 1);
}

bool RegistryTextScanner::readQuoted(std::u16string& text) {
  skip(u"\"");
  while (true) {
    const std::size_t end = std::min(rest.find_first_of(u"\"\\"), rest.size());
    const std::u16string_view plain = rest.substr(0, end);
    text += plain;
    line += static_cast<std::size_t>(std::ranges::count(plain, u'\n'));
    rest.remove_prefix(end);
    if (rest.empty()) {
      return fail("the text has no closing quote");
    }
    if (skip(u"\"")) {
      return text.find(u'\0') == std::u16string::npos || fail("the text holds a NUL character");
    }
    skip(u"\\");
    if (!rest.starts_with(u'\\') && !rest.starts_with(u'"')) {
      return fail("a backslash stands alone; write \\\\ for a backslash and \\\" for a quote");
    }
    text += rest.front();
    rest.remove_prefix(1);
  }
}

bool RegistryTextScanner::readNumber(DWORD& number) {
  constexpr std::size_t mostDigits = 8;
  std::size_t count = 0;
  for (; !rest.empty() && hexDigit(rest.front()) >= 0; ++count) {
    number = number * 16 + static_cast<DWORD>(hexDigit(rest.front()));
    rest.remove_prefix(1);
  }
  return (count > 0 && count <= mostDigits) ||
         fail("the number is not valid; it has one to eight hexadecimal digits");
}

bool RegistryTextScanner::readBytes(std::vector<BYTE>& data) {
  if (!skipToByte()) {
    return false;
  }
  if (rest.empty() || hexDigit(rest.front()) < 0) {
    return true;  // no bytes at all
  }
  do {
    if (!skipToByte() || !readByte(data) || !skipToByte()) {
      return false;
    }
  } while (skip(u","));
  return true;
}

// Passes blanks, and the ends of lines that a backslash carries on.
bool RegistryTextScanner::skipToByte() {
  skipBlanks();
  while (skip(u"\\")) {
    skipBlanks();
    if (!skipLineEnd()) {
      return fail(rest.empty() ? "the bytes break off; a line must follow the backslash"
                               : "a backslash among the bytes; it may only end a line");
    }
    skipBlanks();
  }
  return true;
}

bool RegistryTextScanner::readByte(std::vector<BYTE>& data) {
  int number = 0;
  int count = 0;
  for (; count < 2 && !rest.empty() && hexDigit(rest.front()) >= 0; ++count) {
    number = number * 16 + hexDigit(rest.front());
    rest.remove_prefix(1);
  }
  data.push_back(static_cast<BYTE>(number));
  return count > 0 || fail("a byte is missing or wrong; write two hexadecimal digits");
}

}  // namespace zelvreg
