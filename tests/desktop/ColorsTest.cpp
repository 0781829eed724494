#include "desktop/Colors.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <vector>

#include "controls/ButtonStates.h"

namespace zelvreg::desktop {
namespace {

constexpr Theme themes[] = {Theme::Light, Theme::Dark};

// A grid over all colors.
std::vector<Rgb> accents() {
  std::vector<Rgb> all;
  constexpr unsigned step = 0x33;
  for (unsigned red = 0; red < 256; red += step) {
    for (unsigned green = 0; green < 256; green += step) {
      for (unsigned blue = 0; blue < 256; blue += step) {
        all.push_back(rgb(red << 16 | green << 8 | blue));
      }
    }
  }
  return all;
}

Colors colorsOf(Theme theme, Rgb accent) {
  Colors colors;
  colors.useOwn(theme);
  colors.setAccent(accent);
  return colors;
}

void expectReadable(const Colors& colors, Tone text, Tone ground, double least) {
  EXPECT_GE(controls::contrast(colors[text], colors[ground]), least)
      << static_cast<int>(text) << " on " << static_cast<int>(ground) << " of theme "
      << static_cast<int>(colors.theme());
}

TEST(Colors, TextIsReadableOnItsGroundInBothThemes) {
  for (const Theme theme : themes) {
    Colors colors;
    colors.useOwn(theme);
    for (const Tone ground :
         {Tone::Surface, Tone::Ground, Tone::SideBar, Tone::Header, Tone::Selected}) {
      for (const Tone text :
           {Tone::Text, Tone::Secondary, Tone::Problem, Tone::Link, Tone::OnSelected}) {
        expectReadable(colors, text, ground, controls::readableContrast);
      }
    }
    for (const Tone ground : {Tone::Surface, Tone::Ground}) {
      expectReadable(colors, Tone::Disabled, ground, controls::readableContrast);
    }
  }
}

TEST(Colors, WhateverTheAccentTextAndMarksAreSeen) {
  for (const Theme theme : themes) {
    for (const Rgb accent : accents()) {
      const Colors colors = colorsOf(theme, accent);
      expectReadable(colors, Tone::OnAccent, Tone::Accent, controls::readableContrast);
      expectReadable(colors, Tone::QuietOnAccent, Tone::Accent, controls::readableContrast);
      expectReadable(colors, Tone::OnMark, Tone::Mark, controls::readableContrast);
      for (const Tone ground : {Tone::Surface, Tone::Ground, Tone::SideBar, Tone::Selected}) {
        expectReadable(colors, Tone::Mark, ground, controls::visibleContrast);
      }
    }
  }
}

TEST(Colors, ButtonsAreReadableWhateverTheAccent) {
  for (const Theme theme : themes) {
    for (const Rgb accent : accents()) {
      const Colors colors = colorsOf(theme, accent);
      for (const Tone ground : {Tone::Accent, Tone::Surface, Tone::SideBar, Tone::Ground}) {
        const controls::Palette palette = colors.paletteOn(ground);
        controls::expectReadableInAllStates(palette);
      }
    }
  }
}

TEST(Colors, ATextThatTheFormColorsKeepsItsColorWhereItCanBeRead) {
  constexpr std::uint32_t darkRed = 0x0000C0;
  constexpr std::uint32_t black = 0;
  Colors colors;
  EXPECT_EQ(colors.textFrom(darkRed, Tone::Surface), rgb(0xC00000));
  colors.useOwn(Theme::Dark);
  for (const std::uint32_t told : {darkRed, black}) {
    EXPECT_GE(controls::contrast(colors.textFrom(told, Tone::Surface), colors[Tone::Surface]),
              controls::readableContrast);
  }
}

TEST(Colors, TextOnTheAccentIsWhiteOrDarkWhicheverIsReadMoreEasily) {
  Colors colors;
  colors.setAccent(rgb(0x80FF80));
  EXPECT_EQ(colors[Tone::Accent], rgb(0x80FF80));
  EXPECT_EQ(colors[Tone::OnAccent], rgb(0x1F2937));
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
  colors.useOwn(Theme::Dark);
  EXPECT_FALSE(colors.isSystem());
  EXPECT_EQ(colors.theme(), Theme::Dark);
  EXPECT_EQ(colors[Tone::Accent], rgb(0x80FF80));
}

// The four schemes of high contrast that Windows 7 to 11 ship, by the numbers for GetSysColor: the
// window and its text, a highlight and its text, disabled text, links.
using Scheme = std::map<int, Rgb>;

std::vector<Scheme> schemesOfHighContrast() {
  const auto scheme = [](const std::array<unsigned, 6>& colors) {
    constexpr std::array<int, 6> numbers{5, 8, 13, 14, 17, 26};
    Scheme all;
    for (std::size_t place = 0; place < colors.size(); ++place) {
      all[numbers[place]] = rgb(colors[place]);
    }
    return all;
  };
  return {scheme({0x000000, 0xFFFFFF, 0x1AEBFF, 0x000000, 0x3FF23F, 0xFFFF00}),
          scheme({0xFFFFFF, 0x000000, 0x37006E, 0xFFFFFF, 0x600000, 0x00009F}),
          scheme({0x000000, 0xFFFF00, 0x008000, 0xFFFFFF, 0x00FF00, 0x8080FF}),
          scheme({0x000000, 0x00FF00, 0x0000FF, 0xFFFFFF, 0xC0C0C0, 0x8080FF})};
}

TEST(Colors, TextIsReadableInTheSchemesOfHighContrast) {
  for (const Scheme& scheme : schemesOfHighContrast()) {
    Colors colors;
    colors.useSystem([&](int number) { return scheme.at(number); });
    for (const Tone ground : {Tone::Surface, Tone::Ground, Tone::SideBar, Tone::Header}) {
      for (const Tone text :
           {Tone::Text, Tone::Secondary, Tone::Problem, Tone::Link, Tone::Disabled, Tone::Waiting,
            Tone::Testing, Tone::Finished, Tone::Mark, Tone::Border}) {
        expectReadable(colors, text, ground, controls::readableContrast);
      }
    }
    expectReadable(colors, Tone::OnSelected, Tone::Selected, controls::readableContrast);
    expectReadable(colors, Tone::OnAccent, Tone::Accent, controls::readableContrast);
    expectReadable(colors, Tone::QuietOnAccent, Tone::Accent, controls::readableContrast);
    expectReadable(colors, Tone::OnMark, Tone::Mark, controls::readableContrast);
  }
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
