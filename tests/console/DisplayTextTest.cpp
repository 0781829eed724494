#include "console/DisplayText.h"

#include <gtest/gtest.h>

#include "console/CharacterWidth.h"

namespace zelvreg::console {
namespace {

TEST(Printable, WhatSteersATerminalOrTheDirectionOfWritingBecomesABlank) {
  for (const char* sign : {"\x1b", "\x7f", "\r", "\u0085", "\u009b", "\u061c", "\u200e", "\u200f",
                           "\u2028", "\u202a", "\u202e", "\u2066", "\u2069", "\ufeff"}) {
    EXPECT_EQ(printable("a" + std::string(sign) + "b"), "a b") << sign;
  }
}

TEST(Printable, AllOtherCharactersStayAndStrayBytesDoNot) {
  const std::string text = "C:\\Füße\\שלום\\日本\\\U0001F600 \u00a0\u200b";
  EXPECT_EQ(printable(text), text);
  EXPECT_EQ(printable("a\x9b"
                      "b\xff\xc3"),
            "a?b??");
  // Longer forms of an escape and of a control character.
  EXPECT_EQ(printable("\xc0\x9b\xe0\x82\x9b"), "?????");
}

TEST(Printable, HalvesOfPairsAreShownAsAQuestionMark) {
  EXPECT_EQ(printable("a\xED\xA0\x80z\xED\xB0\x80"), "a?z?");
}

TEST(DisplayWidth, WideCharactersTakeTwoColumnsAndMarksNone) {
  EXPECT_EQ(displayWidth(""), 0U);
  EXPECT_EQ(displayWidth("Füße Иван"), 9U);
  EXPECT_EQ(displayWidth("ソフト"), 6U);
  EXPECT_EQ(displayWidth("ｿﾌﾄ"), 3U);
  EXPECT_EQ(displayWidth("서버 表计算"), 11U);
  EXPECT_EQ(displayWidth("שָׁלוֹם"), 4U);
  EXPECT_EQ(displayWidth("e\u0301"), 1U);
  EXPECT_EQ(displayWidth("\U0001F600\U00020000"), 4U);
}

TEST(CharacterWidth, EachRangeBeginsAndEndsWhereItSays) {
  const std::pair<char32_t, std::size_t> widths[] = {
      {0, 1},       {0x2FF, 1},   {0x300, 0},   {0x36F, 0},   {0x370, 1},   {0x10FF, 1},
      {0x1100, 2},  {0x115F, 2},  {0x1160, 0},  {0x11FF, 0},  {0x1200, 1},  {0x3029, 2},
      {0x302A, 0},  {0x302E, 2},  {0x303F, 1},  {0x3099, 0},  {0x4DC0, 1},  {0x4E00, 2},
      {0xAC00, 2},  {0xD7A3, 2},  {0xFEFF, 0},  {0xFF60, 2},  {0xFF61, 1},  {0x1F5FB, 2},
      {0x20000, 2}, {0x3FFFD, 2}, {0x3FFFE, 1}, {0xE01EF, 0}, {0x10FFFF, 1}};
  for (const auto& [character, width] : widths) {
    EXPECT_EQ(characterWidth(character), width) << static_cast<unsigned>(character);
  }
}

}  // namespace
}  // namespace zelvreg::console
