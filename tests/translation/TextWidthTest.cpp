#include "translation/TextWidth.h"

#include <gtest/gtest.h>

#include <string>

namespace zelvreg {
namespace {

TEST(TextWidth, IsThatOfTheLettersAtTheirSize) {
  // Five digits of 572 thousandths of 12 pixels.
  EXPECT_DOUBLE_EQ(textWidth("12345", {}), 5 * 572 * 12 / 1000.0);
  EXPECT_DOUBLE_EQ(textWidth("12345", {.points = 18}), 2 * textWidth("12345", {}));
  EXPECT_GT(textWidth("12345", {.isBold = true}), textWidth("12345", {}));
  EXPECT_GT(textWidth("MMM", {}), 3 * textWidth("iii", {}));
}

TEST(TextWidth, TheMarkOfAnAccessKeyHasNone) {
  EXPECT_DOUBLE_EQ(textWidth("&Yes", {}), textWidth("Yes", {}));
  EXPECT_GT(textWidth("A & B", {}), textWidth("A  B", {}));
}

TEST(TextWidth, EveryScriptHasSome) {
  const double digit = textWidth("1", {});
  for (const char* text : {"É", "é", "Ж", "ж", "ω", "ש", "ش", "ก"}) {
    EXPECT_GT(textWidth(text, {}), digit / 2) << text;
    EXPECT_LT(textWidth(text, {}), 2 * digit) << text;
  }
  EXPECT_DOUBLE_EQ(textWidth("日", {}), 12);
  EXPECT_DOUBLE_EQ(textWidth("e\u0301", {}), textWidth("e", {}));
}

TEST(TextWidth, LinesBreakAtBlanksAndBetweenSquareCharacters) {
  const double four = textWidth("1234", {});
  EXPECT_EQ(linesOf("1234 1234", {}, 2 * four + 10), 1);
  EXPECT_EQ(linesOf("1234 1234", {}, four), 2);
  EXPECT_EQ(linesOf("日本語日本語", {}, 36), 2);
  EXPECT_EQ(linesOf("", {}, 10), 1);
  EXPECT_GT(linesOf("12345", {}, four), 1000);
}

}  // namespace
}  // namespace zelvreg
