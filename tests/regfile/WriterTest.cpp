#include "regfile/Writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "roots/ValueTypes.h"
#include "unicode/Unicode.h"

namespace zelvreg::regfile {
namespace {

using Encoding = Form::Encoding;

constexpr Form plainUtf8{
    .encoding = Encoding::Utf8, .hasByteOrderMark = false, .hasCarriageReturns = false};

std::string encodeLetters(std::u16string_view text) {
  std::string narrow;
  std::ranges::transform(text, std::back_inserter(narrow), [](char16_t unit) {
    return unit == u'\x434' ? '\xE4' : static_cast<char>(unit);
  });
  return narrow;
}

TEST(RegfileWriter, WritesEachForm) {
  const std::u16string text = u"\x434";
  const std::vector<std::pair<Form, std::string>> files{
      {{Encoding::Utf8, false, false},
       "Windows Registry Editor Version 5.00\n\n[K]\n@=hex(2):34,04\n\"\u0434\"=-\n; \u0434\n"},
      {{Encoding::Utf8, true, true},
       "\xEF\xBB\xBFWindows Registry Editor Version 5.00\r\n\r\n[K]\r\n@=hex(2):34,04\r\n"
       "\"\u0434\"=-\r\n; \u0434\r\n"},
      {{Encoding::Regedit4, false, true},
       "REGEDIT4\r\n\r\n[K]\r\n@=hex(2):e4\r\n\"\xE4\"=-\r\n; \xE4\r\n"}};
  for (const auto& [form, file] : files) {
    Writer writer(form, encodeLetters);
    writer.beginKey(u"K");
    writer.addValue({{}, valueTypes::expandableText, std::as_bytes(std::span(text))});
    writer.addMissingValue(text);
    writer.addLine(u"; \x434");
    EXPECT_EQ(writer.bytes(), file);
  }
}

TEST(RegfileWriter, Utf16HasAMarkAndItsLowByteFirst) {
  Writer writer(Form{});
  const std::string bytes = writer.takeBytes();
  EXPECT_EQ(bytes.substr(0, 6), std::string("\xFF\xFEW\0i\0", 6));
  EXPECT_EQ(bytes.substr(bytes.size() - 4), std::string("\r\0\n\0", 4));
}

TEST(RegfileWriter, WhatWasTakenIsNotWrittenAgain) {
  Writer writer(plainUtf8);
  EXPECT_EQ(writer.takeBytes(), "Windows Registry Editor Version 5.00\n");
  writer.beginKey(u"K");
  EXPECT_EQ(writer.takeBytes(), "\n[K]\n");
  EXPECT_EQ(writer.bytes(), "");
}

}  // namespace
}  // namespace zelvreg::regfile
