#include "desktop/Colors.h"

#include <gtest/gtest.h>

namespace zelvreg::desktop {
namespace {

constexpr double readable = 4.5;

TEST(Colors, TextIsReadableOnItsGround) {
  const Colors colors;
  for (const Tone ground :
       {Tone::Surface, Tone::Ground, Tone::SideBar, Tone::Header, Tone::Selected}) {
    for (const Tone text : {Tone::Text, Tone::Secondary, Tone::Problem, Tone::Link}) {
      EXPECT_GE(controls::contrast(colors[text], colors[ground]), readable)
          << "text " << static_cast<int>(text) << " on " << static_cast<int>(ground);
    }
  }
  EXPECT_GE(controls::contrast(colors[Tone::OnAccent], colors[Tone::Accent]), readable);
  EXPECT_GE(controls::contrast(colors[Tone::QuietOnAccent], colors[Tone::Accent]), readable);
}

TEST(Colors, TextOnTheAccentIsWhiteOrDarkWhicheverIsReadMoreEasily) {
  Colors colors;
  colors.setAccent(rgb(0x80FF80));
  EXPECT_EQ(colors[Tone::Accent], rgb(0x80FF80));
  EXPECT_EQ(colors[Tone::OnAccent], rgb(0x1F2937));
  EXPECT_GE(controls::contrast(colors[Tone::QuietOnAccent], colors[Tone::Accent]), readable);
  colors.setAccent(rgb(0x202020));
  EXPECT_EQ(colors[Tone::OnAccent], rgb(0xFFFFFF));
}

TEST(Colors, HighContrastUsesOnlyTheSystemsColors) {
  Colors colors;
  const auto numbered = [](int number) { return Rgb{static_cast<std::uint8_t>(number), 1, 2}; };
  colors.useSystem(numbered);
  EXPECT_TRUE(colors.isSystem());
  for (std::size_t tone = 0; tone < toneCount; ++tone) {
    EXPECT_EQ(colors[static_cast<Tone>(tone)].green, 1) << tone;
  }
  constexpr int windowText = 8;
  EXPECT_EQ(colors[Tone::Text], numbered(windowText));
  // The suite's color is used again as soon as high contrast is off.
  colors.setAccent(rgb(0x80FF80));
  EXPECT_EQ(colors[Tone::Accent].green, 1);
  colors.useOwn();
  EXPECT_FALSE(colors.isSystem());
  EXPECT_EQ(colors[Tone::Accent], rgb(0x80FF80));
}

TEST(Colors, ButtonsAreDrawnForTheGroundThatTheyAreOn) {
  const Colors colors;
  const controls::Palette palette = colors.paletteOn(Tone::SideBar);
  EXPECT_EQ(palette.ground, colors[Tone::SideBar]);
  EXPECT_EQ(palette.accent, colors[Tone::Accent]);
  EXPECT_EQ(palette.disabledText, colors[Tone::Disabled]);
}

}  // namespace
}  // namespace zelvreg::desktop
