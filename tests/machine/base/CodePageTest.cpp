#include "machine/base/CodePage.h"

#include <gtest/gtest.h>

#include "machine/base/MachineError.h"

namespace zelvreg::machine {
namespace {

TEST(CodePage, KeepsAsciiInEveryPage) {
  std::string ascii;
  for (char letter = 0x01; letter < 0x7F; ++letter) ascii += letter;
  for (const unsigned page : {874U, 932U, 936U, 949U, 950U, 1250U, 1252U, 1255U, 1258U, 65001U}) {
    EXPECT_EQ(CodePage(page).encode(CodePage(page).decode(ascii)), ascii) << page;
    EXPECT_EQ(CodePage(page).decode("\\~")[0], u'\\') << page;
  }
}

TEST(CodePage, ReadsTheWesternPage) {
  EXPECT_EQ(CodePage(1252).decode("\x80\xE9\xFF"), u"€éÿ");
  EXPECT_EQ(CodePage(1252).encode(u"€éÿ"), "\x80\xE9\xFF");
}

TEST(CodePage, GivesAByteWithoutAMeaningTheCharacterOfItsNumber) {
  EXPECT_EQ(CodePage(1252).decode("\x81")[0], char16_t{0x81});
  EXPECT_EQ(CodePage(1252).encode(std::u16string(1, char16_t{0x81})), "\x81");
}

TEST(CodePage, EveryByteOfAOneBytePageSurvivesBothWays) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  for (const unsigned page :
       {874U, 1250U, 1251U, 1252U, 1253U, 1254U, 1255U, 1256U, 1257U, 1258U}) {
    EXPECT_EQ(CodePage(page).encode(CodePage(page).decode(bytes)), bytes) << page;
  }
}

TEST(CodePage, ReadsTwoByteCharacters) {
  EXPECT_EQ(CodePage(932).decode("\x83\x65\x83\x58\x83\x67."), u"テスト.");
  EXPECT_EQ(CodePage(932).encode(u"テスト."), "\x83\x65\x83\x58\x83\x67.");
  EXPECT_EQ(CodePage(936).encode(u"中文"), "\xD6\xD0\xCE\xC4");
  EXPECT_EQ(CodePage(949).encode(u"한"), "\xC7\xD1");
  EXPECT_EQ(CodePage(950).encode(u"中"), "\xA4\xA4");
}

TEST(CodePage, ALeadByteDoesNotSwallowTheEndOfTheText) {
  EXPECT_EQ(CodePage(932).decode("a\x83"), u"a?");
  EXPECT_EQ(CodePage(932).decode(std::string("\x83\0b", 3)), std::u16string(u"?\0b", 3));
}

TEST(CodePage, ReadsVietnameseLettersOneByOne) {
  // A base letter and its mark stay two characters.
  EXPECT_EQ(CodePage(1258).decode("a\xEC").size(), 2U);
}

TEST(CodePage, WritesAQuestionMarkForACharacterThatItDoesNotHave) {
  EXPECT_EQ(CodePage(1252).encode(u"aжb"), "a?b");
  EXPECT_EQ(CodePage(1252).encode(std::u16string(u"a\0b", 3)), std::string("a\0b", 3));
}

TEST(CodePage, RefusesAnUnknownNumber) {
  EXPECT_THROW(CodePage(1), MachineError);
  EXPECT_THROW(sharedCodePage(0), MachineError);
  EXPECT_EQ(sharedCodePage(1251).number(), 1251U);
}

TEST(CodePage, Utf8GoesBothWaysForEveryLength) {
  const std::u16string wide = u"a\u00E9\u20AC\U0001F600";
  EXPECT_EQ(CodePage(65001).encode(wide), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(CodePage(65001).decode(CodePage(65001).encode(wide)), wide);
}

TEST(CodePage, Utf8PutsTheReplacementCharacterForWhatIsNotWellFormed) {
  const CodePage page(65001);
  EXPECT_EQ(page.decode("a\xFFz"), u"a\uFFFDz");
  EXPECT_EQ(page.decode("\xC0\xAF"), u"\uFFFD\uFFFD");                          // overlong
  EXPECT_EQ(page.decode("\xED\xA0\x80\xC3\xA9"), u"\uFFFD\uFFFD\uFFFD\u00E9");  // a surrogate
  EXPECT_EQ(page.decode("\xE2\x82"), u"\uFFFD\uFFFD");                          // cut off
  EXPECT_EQ(page.encode(u"\xD800\U0001F600\xDC00"), "\xEF\xBF\xBD\xF0\x9F\x98\x80\xEF\xBF\xBD");
}

}  // namespace
}  // namespace zelvreg::machine
