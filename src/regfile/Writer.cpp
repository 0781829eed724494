#include "regfile/Writer.h"

#include <bit>
#include <cstring>
#include <utility>

#include "roots/ValueTypes.h"
#include "unicode/Unicode.h"

namespace zelvreg::regfile {
namespace {

using Encoding = Form::Encoding;

// Where a line of bytes is broken: the byte that would go beyond it begins the next line.
constexpr std::size_t lineWidth = 80;

void appendNumber(std::u16string& text, std::uint32_t number, int digits) {
  for (int digit = digits - 1; digit >= 0; --digit) {
    text += u"0123456789abcdef"[number >> (4 * digit) & 0xF];
  }
}

void appendByte(std::u16string& text, std::byte byte) {
  appendNumber(text, std::to_integer<std::uint32_t>(byte), 2);
}

// Whether every unit stays what it is between quotes in a line, whatever program reads it.
bool isSound(std::u16string_view text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char16_t unit = text[at];
    if (isPairAt(text, at)) {
      ++at;
    } else if ((unit < u' ' && unit != u'\t') || isSurrogate(unit) || unit >= 0xFFFE) {
      return false;
    }
  }
  return true;
}

// Data as units; a last odd byte is left out.
void readUnits(std::u16string& units, std::span<const std::byte> data) {
  units.resize(data.size() / sizeof(char16_t));
  if (!units.empty()) {
    std::memcpy(units.data(), data.data(), units.size() * sizeof(char16_t));
  }
}

}  // namespace

Writer::Writer(const Form& used, EncodeNarrow narrow)
    : form(used), encodeNarrow(narrow), lineEnd(used.hasCarriageReturns ? u"\r\n" : u"\n") {
  if (form.encoding == Encoding::Utf16) {
    pending = utf16Mark;
  } else if (form.encoding == Encoding::Utf8 && form.hasByteOrderMark) {
    pending = utf8Mark;
  }
  addLine(form.encoding == Encoding::Regedit4 ? regedit4Header : version5Header);
}

void Writer::beginKey(std::u16string_view path) {
  endLine();
  line.append(u"[").append(path).append(u"]");
  endLine();
}

void Writer::addValue(const Value& value) {
  beginValue(value.name);
  if (value.type == valueTypes::text && value.data.size() % sizeof(char16_t) == 0) {
    readUnits(units, value.data);
    const std::u16string_view text = std::u16string_view(units).substr(0, units.find(u'\0'));
    if (text.size() + 1 == units.size() && isSound(text)) {
      appendQuoted(text);
      endLine();
      return;
    }
  }
  if (value.type == valueTypes::number && value.data.size() == sizeof(std::uint32_t)) {
    std::uint32_t number = 0;
    std::memcpy(&number, value.data.data(), sizeof number);
    line += u"dword:";
    appendNumber(line, number, 8);
  } else {
    appendHex(value);
  }
  endLine();
}

void Writer::addMissingValue(std::u16string_view name) {
  beginValue(name);
  line += u'-';
  endLine();
}

void Writer::addLine(std::u16string_view text) {
  line += text;
  endLine();
}

std::string Writer::takeBytes() { return std::exchange(pending, {}); }

void Writer::beginValue(std::u16string_view name) {
  if (name.empty()) {
    line += u'@';
  } else {
    appendQuoted(name);
  }
  line += u'=';
}

void Writer::appendQuoted(std::u16string_view text) {
  line += u'"';
  for (const char16_t unit : text) {
    if (unit == u'"' || unit == u'\\') {
      line += u'\\';
    }
    line += unit;
  }
  line += u'"';
}

void Writer::appendHex(const Value& value) {
  line += u"hex";
  if (value.type != valueTypes::binary) {
    line += u'(';
    appendNumber(line, value.type, (std::bit_width(value.type | 1) + 3) / 4);
    line += u')';
  }
  line += u':';
  if (form.encoding == Encoding::Regedit4 && isText(value.type)) {
    readUnits(units, value.data);
    const std::string narrow = encodeNarrow(units);
    appendBytes(std::as_bytes(std::span(narrow)));
  } else {
    appendBytes(value.data);
  }
}

void Writer::appendBytes(std::span<const std::byte> bytes) {
  std::size_t lineStart = 0;
  for (std::size_t index = 0; index < bytes.size(); ++index) {
    // Two digits, a comma and the backslash that goes on in the next line.
    if (index > 0 && line.size() - lineStart + 4 > lineWidth) {
      line.append(u"\\").append(lineEnd);
      lineStart = line.size();
      line += u"  ";
    }
    appendByte(line, bytes[index]);
    if (index + 1 < bytes.size()) {
      line += u',';
    }
  }
}

void Writer::endLine() {
  line += lineEnd;
  switch (form.encoding) {
    case Encoding::Utf16:
      static_assert(std::endian::native == std::endian::little);
      pending.append(reinterpret_cast<const char*>(line.data()), line.size() * sizeof(char16_t));
      break;
    case Encoding::Utf8:
      pending += utf8(line);
      break;
    case Encoding::Regedit4:
      pending += encodeNarrow(line);
      break;
  }
  line.clear();
}

void appendByteList(std::u16string& text, std::span<const std::byte> bytes) {
  for (std::size_t index = 0; index < bytes.size(); ++index) {
    if (index > 0) {
      text += u',';
    }
    appendByte(text, bytes[index]);
  }
}

}  // namespace zelvreg::regfile
