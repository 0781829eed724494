#include "desktop/FieldColors.h"

#include <gtest/gtest.h>

namespace zelvreg::desktop {
namespace {

TEST(FieldColors, AFieldUnderTheMouseLooksAsIfItHadTheFocus) {
  EXPECT_EQ(edgeOf({}), Tone::Border);
  EXPECT_EQ(edgeOf({.isHovered = true}), Tone::Mark);
  EXPECT_EQ(edgeOf({.isFocused = true}), Tone::Mark);
  EXPECT_EQ(arrowOf({}), Tone::Secondary);
  EXPECT_EQ(arrowOf({.isFocused = true}), Tone::Secondary);
  EXPECT_EQ(arrowOf({.isHovered = true}), Tone::Mark);
}

TEST(FieldColors, ADisabledOneTakesNoNoticeOfTheMouse) {
  EXPECT_EQ(edgeOf({.isEnabled = false, .isHovered = true}), Tone::Border);
  EXPECT_EQ(arrowOf({.isEnabled = false, .isHovered = true}), Tone::Disabled);
}

}  // namespace
}  // namespace zelvreg::desktop
