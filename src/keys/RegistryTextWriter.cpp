#include "keys/RegistryTextWriter.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "keys/RegistryTextNotes.h"

namespace zelvreg {
namespace {

constexpr std::u16string_view lineEnd = u"\r\n";
// Where a line of bytes is broken: the byte that goes beyond it begins the next line.
constexpr std::size_t lineWidth = 80;

bool holds(std::u16string_view text, std::u16string_view units) {
  return text.find_first_of(units) != std::u16string_view::npos;
}

constexpr std::u16string_view digits = u"0123456789abcdef";

std::u16string hexadecimal(std::uint32_t number, std::size_t leastDigits) {
  std::u16string result;
  for (; number != 0 || result.size() < leastDigits; number /= 16) {
    result += digits[number % 16];
  }
  std::ranges::reverse(result);
  return result;
}

std::u16string inQuotes(std::u16string_view text) {
  std::u16string result = u"\"";
  for (const char16_t unit : text) {
    if (unit == u'"' || unit == u'\\') {
      result += u'\\';
    }
    result += unit;
  }
  return result += u'"';
}

bool isHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// Whether every unit stays what it is between quotes in a line.
bool isPlainText(std::u16string_view text) {
  for (std::size_t index = 0; index < text.size(); ++index) {
    const char16_t unit = text[index];
    const bool isPaired =
        isHighSurrogate(unit) && index + 1 < text.size() && isLowSurrogate(text[index + 1]);
    if (isPaired) {
      ++index;
    } else if ((unit < u' ' && unit != u'\t') || isHighSurrogate(unit) || isLowSurrogate(unit) ||
               unit >= 0xFFFE) {
      return false;
    }
  }
  return true;
}

// The text of data that hold one and nothing else, with one terminator; else none.
std::optional<std::u16string> textOf(const std::vector<BYTE>& data) {
  if (data.empty() || data.size() % sizeof(char16_t) != 0) {
    return std::nullopt;
  }
  std::u16string text(data.size() / sizeof(char16_t), u'\0');
  std::memcpy(text.data(), data.data(), data.size());
  if (text.back() != u'\0') {
    return std::nullopt;
  }
  text.pop_back();
  return isPlainText(text) ? std::optional(text) : std::nullopt;
}

std::u16string hexLines(std::u16string line, const std::vector<BYTE>& data) {
  std::u16string lines;
  for (std::size_t index = 0; index < data.size(); ++index) {
    // Two digits, a comma and the backslash that goes on in the next line.
    if (index > 0 && line.size() + 4 > lineWidth) {
      lines.append(line).append(u"\\").append(lineEnd);
      line = u"  ";
    }
    line += digits[data[index] / 16];
    line += digits[data[index] % 16];
    if (index + 1 < data.size()) {
      line += u',';
    }
  }
  return lines + line;
}

// From the name on, without the line's end.
std::u16string valueLine(const WideValue& value) {
  const std::u16string start = (value.name.empty() ? u"@" : inQuotes(value.name)) + u"=";
  if (value.type == REG_SZ) {
    if (const auto text = textOf(value.data)) {
      return start + inQuotes(*text);
    }
  }
  if (value.type == REG_DWORD && value.data.size() == sizeof(DWORD)) {
    DWORD number = 0;
    std::memcpy(&number, value.data.data(), sizeof number);
    return start + u"dword:" + hexadecimal(number, 8);
  }
  if (value.type == REG_BINARY) {
    return hexLines(start + u"hex:", value.data);
  }
  return hexLines(start + u"hex(" + hexadecimal(value.type, 1) + u"):", value.data);
}

}  // namespace

RegistryTextWriter::RegistryTextWriter() : text(u"Windows Registry Editor Version 5.00\r\n") {}

bool RegistryTextWriter::beginKey(const std::u16string& path) {
  if (holds(path, {u"\r\n\0", 3})) {
    return false;
  }
  hasKey = true;
  text.append(lineEnd).append(u"[").append(path).append(u"]").append(lineEnd);
  return true;
}

void RegistryTextWriter::markAsSafetyExport() {
  text.append(notes::prefix).append(notes::safetyExport).append(lineEnd);
}

// In one line: a comment cannot be continued.
void RegistryTextWriter::addSecurity(const std::vector<BYTE>& descriptor) {
  text.append(notes::prefix).append(notes::security);
  for (std::size_t index = 0; index < descriptor.size(); ++index) {
    text.append(index == 0 ? u"" : u",");
    text += digits[descriptor[index] / 16];
    text += digits[descriptor[index] % 16];
  }
  text.append(lineEnd);
}

void RegistryTextWriter::addOrder(const std::vector<std::size_t>& positions) {
  text.append(notes::prefix)
      .append(notes::order)
      .append(notes::positionsText(positions))
      .append(lineEnd);
}

bool RegistryTextWriter::addValue(const WideValue& value) {
  if (holds(value.name, {u"\0", 1})) {
    return false;
  }
  text.append(valueLine(value)).append(lineEnd);
  return true;
}

void RegistryTextWriter::addMissingDefault() { text.append(u"@=-").append(lineEnd); }

std::string RegistryTextWriter::bytes() const {
  std::string result = "\xFF\xFE";
  result.reserve(result.size() + text.size() * sizeof(char16_t));
  for (const char16_t unit : text) {
    result += static_cast<char>(unit & 0xFF);
    result += static_cast<char>(unit >> 8);
  }
  return result;
}

}  // namespace zelvreg
