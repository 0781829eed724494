#include "unicode/Unicode.h"

#include <gtest/gtest.h>

#include <vector>

using zelvreg::asciiLength;
using zelvreg::isPlainUtf8;
using zelvreg::utf16;
using zelvreg::utf8;

TEST(Unicode, EveryUnitAndEveryCharacterReturns) {
  for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
    const std::u16string text(1, static_cast<char16_t>(unit));
    ASSERT_EQ(utf16(utf8(text)), text) << static_cast<unsigned>(unit);
  }
  for (char32_t code = 0x10000; code <= 0x10FFFF; code += 0x3FF) {
    std::string text;
    zelvreg::appendCharacter(text, code);
    ASSERT_EQ(text.size(), 4U);
    ASSERT_EQ(utf16(text).size(), 2U);
    ASSERT_EQ(utf8(utf16(text)), text) << static_cast<unsigned>(code);
  }
}

TEST(Unicode, ATextEndsAtItsFirstNul) {
  EXPECT_EQ(zelvreg::untilNul(std::u16string_view(u"ab\0c\0", 5)), u"ab");
  EXPECT_EQ(zelvreg::untilNul(std::u16string_view(u"\0a", 2)), u"");
  EXPECT_EQ(zelvreg::untilNul(std::u16string_view(u"abc")), u"abc");
}

TEST(Unicode, AUnitIsFoundInTextOfAnyLength) {
  for (std::size_t size = 0; size < 40; ++size) {
    std::u16string text(size, u'a');
    EXPECT_EQ(zelvreg::findUnit(text, u'x'), size);
    for (std::size_t place = 0; place < size; ++place) {
      text[place] = u'x';
      EXPECT_EQ(zelvreg::findUnit(text, u'x'), place);
      EXPECT_EQ(zelvreg::findUnit(text, u'x', place), place);
      EXPECT_EQ(zelvreg::findUnit(text, u'x', place + 1), size);
      text[place] = u'a';
    }
  }
}

TEST(Unicode, HalvesOfPairsReturnInAnyOrder) {
  const std::u16string text = u"a\xDC00\xD800z\xD83D\xDE00\xD83D";
  EXPECT_EQ(utf8(text), "a\xED\xB0\x80\xED\xA0\x80z\xF0\x9F\x98\x80\xED\xA0\xBD");
  EXPECT_EQ(utf16(utf8(text)), text);
}

TEST(Unicode, ATextIsAppendedBehindWhatIsThere) {
  std::string text = "\xC3\xA9";
  zelvreg::appendUtf8(text, u"plain, and then \x00E9 and \xD83D\xDE00");
  EXPECT_EQ(text, "\xC3\xA9plain, and then \xC3\xA9 and \xF0\x9F\x98\x80");
  zelvreg::appendUtf8(text, u"");
  EXPECT_EQ(text.size(), 29U);
}

TEST(Unicode, HalvesThatMeetBecomeAPair) {
  const std::string text = utf8(u"\xD83D") + utf8(u"\xDE00");
  EXPECT_EQ(utf8(utf16(text)), "\xF0\x9F\x98\x80");
}

TEST(Unicode, AByteThatIsNoCharacterIsReplaced) {
  for (const char* bytes :
       {"\x80", "\xC0", "\xC1", "\xF5", "\xFF", "\xC3", "\xE2\x82", "\xC0\x80", "\xE0\x80\x80"}) {
    const std::u16string wide = utf16("a" + std::string(bytes));
    EXPECT_EQ(wide.substr(0, 2), u"a\xFFFD") << bytes;
  }
  EXPECT_EQ(utf16("\xC3z"), u"\xFFFDz");
}

TEST(Unicode, PlainUtf8IsWhatOthersRead) {
  EXPECT_TRUE(isPlainUtf8(""));
  EXPECT_TRUE(isPlainUtf8("Иван ソ \xF0\x9F\x98\x80"));
  EXPECT_FALSE(isPlainUtf8(utf8(u"x\xD800")));
  EXPECT_FALSE(isPlainUtf8("caf\xE9"));
  EXPECT_FALSE(isPlainUtf8("\xF4\x90\x80\x80"));
}

TEST(Unicode, AsciiIsCountedOverBlocks) {
  for (std::size_t length = 0; length < 40; ++length) {
    EXPECT_EQ(asciiLength(std::string(length, 'x')), length);
    EXPECT_EQ(asciiLength(std::string(length, 'x') + "\xC3\xA4" + std::string(20, 'y')), length);
  }
}

TEST(Unicode, TextOfEveryLengthReturnsWhereverItStopsBeingAscii) {
  for (std::size_t length = 0; length < 40; ++length) {
    std::u16string plain(length, u'\0');
    for (std::size_t at = 0; at < length; ++at) {
      plain[at] = static_cast<char16_t>(u'A' + at);
    }
    const std::string narrow(plain.begin(), plain.end());
    ASSERT_EQ(utf8(plain), narrow);
    ASSERT_EQ(utf16(narrow), plain);
    for (std::size_t at = 0; at < length; ++at) {
      std::u16string text = plain;
      text[at] = u'\u30BD';
      ASSERT_EQ(utf8(text), narrow.substr(0, at) + "\u30BD" + narrow.substr(at + 1));
      ASSERT_EQ(utf16(utf8(text)), text);
    }
  }
}

TEST(Unicode, SurrogatesAreKnownByTheirNumbers) {
  for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
    const bool isHigh = unit >= 0xD800 && unit < 0xDC00;
    const bool isLow = unit >= 0xDC00 && unit < 0xE000;
    ASSERT_EQ(zelvreg::isHighSurrogate(unit), isHigh) << static_cast<unsigned>(unit);
    ASSERT_EQ(zelvreg::isLowSurrogate(unit), isLow) << static_cast<unsigned>(unit);
    ASSERT_EQ(zelvreg::isSurrogate(unit), isHigh || isLow) << static_cast<unsigned>(unit);
  }
}

TEST(Unicode, OnlyAHighSurrogateBeforeALowOneMakesAPair) {
  const std::u16string text{u'a',
                            char16_t{0xDC00},
                            char16_t{0xD83D},
                            char16_t{0xD83D},
                            char16_t{0xDE00},
                            char16_t{0xD800}};
  std::vector<bool> pairs;
  for (std::size_t at = 0; at < text.size(); ++at) {
    pairs.push_back(zelvreg::isPairAt(text, at));
  }
  EXPECT_EQ(pairs, (std::vector<bool>{false, false, false, true, false, false}));
}
