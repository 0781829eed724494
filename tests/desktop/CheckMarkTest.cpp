#include "desktop/CheckMark.h"

#include <gtest/gtest.h>

#include <vector>

namespace zelvreg::desktop {
namespace {

std::vector<std::uint32_t> drawn(CheckMark mark, Theme theme) {
  constexpr int length = 16;
  Colors colors;
  colors.useOwn(theme);
  std::vector<std::uint32_t> pixels(std::size_t{length} * length);
  controls::Canvas canvas(pixels, length, length);
  canvas.clear(colors[Tone::Surface]);
  mark.length = length;
  drawCheckMark(canvas, mark, colors);
  return pixels;
}

TEST(CheckMark, EachStateOfAnEmptyBoxLooksDifferentInBothThemes) {
  for (const Theme theme : {Theme::Light, Theme::Dark}) {
    for (const bool isRound : {false, true}) {
      CheckMark mark;
      mark.isRound = isRound;
      const auto quiet = drawn(mark, theme);
      mark.isHovered = true;
      const auto hovered = drawn(mark, theme);
      mark.isPressed = true;
      const auto pressed = drawn(mark, theme);
      EXPECT_NE(quiet, hovered);
      EXPECT_NE(hovered, pressed);
      mark.isEnabled = false;
      const auto disabled = drawn(mark, theme);
      EXPECT_NE(quiet, disabled);
      // It does not answer the mouse.
      mark.isHovered = false;
      mark.isPressed = false;
      EXPECT_EQ(drawn(mark, theme), disabled);
    }
  }
}

}  // namespace
}  // namespace zelvreg::desktop
