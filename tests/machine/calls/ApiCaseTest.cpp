#include <gtest/gtest.h>
#include <windows.h>

#include <string>

namespace zelvreg::fixture {
namespace {

std::u16string lower(std::u16string text) {
  EXPECT_EQ(CharLowerBuffW(text.data(), static_cast<DWORD>(text.size())), text.size());
  return text;
}

std::u16string upper(std::u16string text) {
  EXPECT_EQ(CharUpperBuffW(text.data(), static_cast<DWORD>(text.size())), text.size());
  return text;
}

TEST(ApiCaseTest, ChangesTheLettersOfEveryScript) {
  EXPECT_EQ(lower(u"\u00C4BC \u00DF \u0416\u0421 \u30BD"), u"\u00E4bc \u00DF \u0436\u0441 \u30BD");
  EXPECT_EQ(upper(u"\u00E4bc \u00DF \u0436\u0441 \u30BD"), u"\u00C4BC \u00DF \u0416\u0421 \u30BD");
}

TEST(ApiCaseTest, ALetterWhoseCaseBelongsToAnotherOneStays) {
  EXPECT_EQ(upper(u"\u00B5\u00FF\u0131"), u"\u00B5\u0178\u0131");
}

TEST(ApiCaseTest, HalvesOfACharacterStay) {
  // The lower case of the first is 0x10428.
  EXPECT_EQ(lower(u"\U00010400 A"), u"\U00010400 a");
  EXPECT_EQ(upper(u"a\xD800"), u"A\xD800");
}

TEST(ApiCaseTest, NothingAfterTheSizeChanges) {
  std::u16string text = u"ab";
  CharUpperBuffW(text.data(), 1);
  EXPECT_EQ(text, u"Ab");
}

}  // namespace
}  // namespace zelvreg::fixture
