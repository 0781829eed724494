#include "text/Characters.h"

#include <gtest/gtest.h>

#include "text/Wide.h"

using namespace zelvreg;

TEST(Characters, AreCountedWhateverTheirBytes) {
  EXPECT_EQ(characterCount(""), 0U);
  EXPECT_EQ(characterCount("aäソ\xF0\x9F\x98\x80"), 4U);
  EXPECT_EQ(characterCount("e\xCC\x81"), 2U) << "a combining mark is a character of its own";
  EXPECT_EQ(characterCount(utf8(u"\xD800x")), 2U);
}

TEST(Characters, AreCutWhole) {
  EXPECT_EQ(firstCharacters("表計算", 2), "表計");
  EXPECT_EQ(firstCharacters("表", 2), "表");
  EXPECT_EQ(lastCharacters("Иван.exe", 4), ".exe");
  EXPECT_EQ(lastCharacters("ソ表", 1), "表");
  EXPECT_EQ(lastCharacters("ソ", 4), "ソ");
  EXPECT_EQ(afterCharacters("ソ:\\", 1), ":\\");
  EXPECT_EQ(afterCharacters("ソ", 2), "");
}

TEST(Characters, AreFoundByTheirIndex) {
  EXPECT_EQ(characterAt("ソ:", 1), U':');
  EXPECT_EQ(characterAt("\xF0\x9F\x98\x80z", 0), U'\U0001F600');
  EXPECT_EQ(characterAt("a", 1), U'\0');
  EXPECT_EQ(charactersOf("aソ\xF0\x9F\x98\x80"), U"aソ\U0001F600");
}

TEST(Characters, FitIntoBytesWhole) {
  EXPECT_EQ(firstBytes("ソソ", 5), "ソ");
  EXPECT_EQ(firstBytes("ソソ", 6), "ソソ");
  EXPECT_EQ(firstBytes("\xF0\x9F\x98\x80", 3), "");
  EXPECT_EQ(firstBytes("abc", 2), "ab");
}

TEST(Characters, GoIntoTheSystemWhateverTheirNumber) {
  for (const std::size_t count : {0U, 1U, 87U, 88U, 89U, 263U, 264U, 265U, 3000U}) {
    std::string text;
    for (std::size_t each = 0; each < count; ++each) {
      text += "ソ";
    }
    EXPECT_EQ(Wide(text).view(), std::u16string(count, u'ソ'));
    EXPECT_EQ(Wide(std::string(count, 'x')).view(), std::u16string(count, u'x'));
  }
}
