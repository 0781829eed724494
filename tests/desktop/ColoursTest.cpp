#include "desktop/Colours.h"

#include <gtest/gtest.h>

namespace zelvreg::desktop {
namespace {

constexpr double readable = 4.5;

TEST(Colours, TextIsReadableOnWhatItStandsOn) {
  const Colours colours;
  for (const Tone ground :
       {Tone::Surface, Tone::Ground, Tone::SideBar, Tone::Header, Tone::Selected}) {
    for (const Tone text : {Tone::Text, Tone::Secondary, Tone::Problem, Tone::Link}) {
      EXPECT_GE(controls::contrast(colours[text], colours[ground]), readable)
          << "text " << static_cast<int>(text) << " on " << static_cast<int>(ground);
    }
  }
  EXPECT_GE(controls::contrast(colours[Tone::OnAccent], colours[Tone::Accent]), readable);
  EXPECT_GE(controls::contrast(colours[Tone::QuietOnAccent], colours[Tone::Accent]), readable);
}

TEST(Colours, TextOnTheAccentIsWhiteOrDarkWhicheverIsReadMoreEasily) {
  Colours colours;
  colours.setAccent(rgb(0x80FF80));
  EXPECT_EQ(colours[Tone::Accent], rgb(0x80FF80));
  EXPECT_EQ(colours[Tone::OnAccent], rgb(0x1F2937));
  EXPECT_GE(controls::contrast(colours[Tone::QuietOnAccent], colours[Tone::Accent]), readable);
  colours.setAccent(rgb(0x202020));
  EXPECT_EQ(colours[Tone::OnAccent], rgb(0xFFFFFF));
}

TEST(Colours, HighContrastTakesTheSystemsColoursAlone) {
  Colours colours;
  const auto numbered = [](int number) { return Rgb{static_cast<std::uint8_t>(number), 1, 2}; };
  colours.useSystem(numbered);
  EXPECT_TRUE(colours.isSystem());
  for (std::size_t tone = 0; tone < toneCount; ++tone) {
    EXPECT_EQ(colours[static_cast<Tone>(tone)].green, 1) << tone;
  }
  constexpr int windowText = 8;
  EXPECT_EQ(colours[Tone::Text], numbered(windowText));
  // The suite's colour waits until the user has the program's own again.
  colours.setAccent(rgb(0x80FF80));
  EXPECT_EQ(colours[Tone::Accent].green, 1);
  colours.useOwn();
  EXPECT_FALSE(colours.isSystem());
  EXPECT_EQ(colours[Tone::Accent], rgb(0x80FF80));
}

TEST(Colours, ButtonsAreDrawnForTheGroundThatTheyStandOn) {
  const Colours colours;
  const controls::Palette palette = colours.paletteOn(Tone::SideBar);
  EXPECT_EQ(palette.ground, colours[Tone::SideBar]);
  EXPECT_EQ(palette.accent, colours[Tone::Accent]);
  EXPECT_EQ(palette.disabledText, colours[Tone::Disabled]);
}

}  // namespace
}  // namespace zelvreg::desktop
