#include "keys/RegistryTextWriter.h"

#include "keys/RegistryTextReader.h"
#include "support/ComputerFixture.h"
#include "support/WideValues.h"

namespace zelvreg {
namespace {

using namespace std::string_view_literals;
using fixture::bytes;

class RegistryTextWriterTest : public fixture::ComputerFixture {
 protected:
  // The line of one value, without its end.
  static std::u16string lineOf(const WideValue& value) {
    RegistryTextWriter writer;
    EXPECT_TRUE(writer.beginKey(u"K"));
    EXPECT_TRUE(writer.addValue(value));
    const std::u16string text = fixture::textOfUtf16File(writer.bytes());
    const std::size_t start = text.find(u"[K]\r\n") + 5;
    return text.substr(start, text.size() - start - 2);
  }
};

TEST_F(RegistryTextWriterTest, AFileHasAMarkAHeaderAndABlankLineBeforeEachKey) {
  RegistryTextWriter writer;
  EXPECT_TRUE(writer.isEmpty());
  EXPECT_TRUE(writer.beginKey(u"HKEY_USERS\\\x4E2D"));
  EXPECT_TRUE(writer.addValue({u"n", REG_DWORD, bytes("\x2A\0\0\0"sv)}));
  EXPECT_TRUE(writer.beginKey(u"HKEY_USERS\\b]"));
  writer.addMissingDefault();
  EXPECT_FALSE(writer.isEmpty());
  EXPECT_EQ(writer.bytes(), fixture::utf16File(u"Windows Registry Editor Version 5.00\r\n\r\n"
                                               u"[HKEY_USERS\\\x4E2D]\r\n\"n\"=dword:0000002a\r\n"
                                               u"\r\n[HKEY_USERS\\b]]\r\n@=-\r\n"));
}

TEST_F(RegistryTextWriterTest, NotesAreComments) {
  RegistryTextWriter writer;
  writer.markAsSafetyExport("S-1-5-18");
  EXPECT_TRUE(writer.isEmpty());
  EXPECT_TRUE(writer.beginKey(u"K"));
  writer.addSecurity(bytes("\x01\xAB"sv));
  writer.addOrder({0, 1, 4});
  EXPECT_EQ(fixture::textOfUtf16File(writer.bytes()),
            u"Windows Registry Editor Version 5.00\r\n;zelvreg safety export\r\n"
            u";zelvreg user=S-1-5-18\r\n\r\n[K]\r\n"
            u";zelvreg security=hex:01,ab\r\n;zelvreg order=0-1,4\r\n");
}

TEST_F(RegistryTextWriterTest, OnlySoundTextStandsBetweenQuotes) {
  EXPECT_EQ(lineOf({u"a\"b\\", REG_SZ, bytes(u"\"C:\\\"\t\0"sv)}),
            u"\"a\\\"b\\\\\"=\"\\\"C:\\\\\\\"\t\"");
  EXPECT_EQ(lineOf({u"", REG_SZ, bytes(u"\0"sv)}), u"@=\"\"");
  EXPECT_EQ(lineOf({u"", REG_SZ, {}}), u"@=hex(1):");
  EXPECT_EQ(lineOf({u"", REG_SZ, bytes(u"a"sv)}), u"@=hex(1):61,00");
  EXPECT_EQ(lineOf({u"", REG_SZ, bytes(u"\n\0"sv)}), u"@=hex(1):0a,00,00,00");
  EXPECT_EQ(lineOf({u"", REG_SZ, bytes(u"\xDE00\0"sv)}), u"@=hex(1):00,de,00,00");
}

TEST_F(RegistryTextWriterTest, OtherTypesAreBytes) {
  EXPECT_EQ(lineOf({u"", REG_BINARY, bytes("\x0F\xF0"sv)}), u"@=hex:0f,f0");
  EXPECT_EQ(lineOf({u"", REG_DWORD, bytes("\x01\x02\x03"sv)}), u"@=hex(4):01,02,03");
  EXPECT_EQ(lineOf({u"", REG_NONE, {}}), u"@=hex(0):");
  EXPECT_EQ(lineOf({u"", REG_QWORD, bytes("\x01"sv)}), u"@=hex(b):01");
  EXPECT_EQ(lineOf({u"", 0x20000, bytes("\x01"sv)}), u"@=hex(20000):01");
}

TEST_F(RegistryTextWriterTest, LongBytesGoOnInTheNextLine) {
  const std::u16string text = lineOf({u"", REG_BINARY, std::vector<BYTE>(60, 0xAB)});
  EXPECT_EQ(text.find(u"\\\r\n  ab,"), 78U);
  std::size_t longest = 0;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find(u"\r\n", start), text.size());
    longest = std::max(longest, end - start);
    start = end + 2;
  }
  EXPECT_LE(longest, 80U);
  EXPECT_EQ(std::ranges::count(text, u','), 59);
}

TEST_F(RegistryTextWriterTest, NamesThatNoFileCanHoldAreRefused) {
  RegistryTextWriter writer;
  EXPECT_FALSE(writer.beginKey(u"HKEY_USERS\\a\nb"));
  EXPECT_FALSE(writer.beginKey(u"HKEY_USERS\\a\rb"));
  EXPECT_TRUE(writer.isEmpty());
  EXPECT_TRUE(writer.beginKey(u"HKEY_USERS\\a"));
  const std::string before = writer.bytes();
  EXPECT_FALSE(writer.addValue({{u"a\0b", 3}, REG_SZ, {}}));
  EXPECT_EQ(writer.bytes(), before);
}

TEST_F(RegistryTextWriterTest, WhatIsWrittenIsReadBackBitForBit) {
  const std::vector<WideValue> values = fixture::unusualValues();
  RegistryTextWriter writer;
  EXPECT_TRUE(writer.beginKey(u"HKEY_CURRENT_USER\\Software\\\x4E2D] [;\""));
  for (const WideValue& value : values) {
    EXPECT_TRUE(writer.addValue(value));
  }
  const RegistryChanges changes = readRegistryText(writer.bytes());
  ASSERT_FALSE(changes.fault) << changes.fault->line << " " << changes.fault->what;
  ASSERT_EQ(changes.list.size(), values.size() + 1);
  EXPECT_EQ(changes.list[0].path, u"Software\\\x4E2D] [;\"");
  for (std::size_t index = 0; index < values.size(); ++index) {
    EXPECT_TRUE(changes.list[index + 1].value == values[index]) << index;
  }
}

}  // namespace
}  // namespace zelvreg
