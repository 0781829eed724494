#include "controls/ButtonLook.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "controls/ButtonStates.h"
#include "controls/ButtonStyles.h"

namespace zelvreg::controls {
namespace {

constexpr Size usual = {120, 32};

ButtonLook usualLook(std::int32_t style, const NamedState& named, int dpi = 96) {
  return lookOf(propertiesOf(style, named), named.state,
                {scaled(usual.width, dpi), scaled(usual.height, dpi)}, dpi, {});
}

// The face with a line of "text" on it, where a caption would begin.
Bitmap drawn(const ButtonLook& look, int dpi = 96) {
  Bitmap bitmap(scaled(usual.width, dpi), scaled(usual.height, dpi));
  Canvas canvas(bitmap);
  canvas.clear(Palette().ground);
  for (const Shape& shape : look.shapes) {
    canvas.draw(shape);
  }
  const double middle = bitmap.height / 2.0 + look.shift;
  const double left = look.isLeftAligned ? scaled(12, dpi) : scaled(40, dpi);
  canvas.draw(Stroke{left, middle, left + scaled(40, dpi), middle, 4}, look.text);
  return bitmap;
}

TEST(ButtonLook, NoTwoStylesOrStatesHaveEqualPixels) {
  for (const int dpi : {96, 144, 192}) {
    std::map<std::vector<std::uint32_t>, std::string> seen;
    for (std::int32_t style = 1; style <= styleCount; ++style) {
      for (const NamedState& named : states) {
        const std::string name = std::string(styleOf(style).name) + " " + named.name;
        const auto [place, isNew] =
            seen.emplace(drawn(usualLook(style, named, dpi), dpi).pixels, name);
        EXPECT_TRUE(isNew) << name << " looks like " << place->second << " at " << dpi;
      }
    }
    EXPECT_EQ(seen.size(), 14U * states.size());
  }
}

// One style in all states, with the face that the properties give it.
void expectStatesApart(std::int32_t style, std::uint32_t back, std::int32_t scheme,
                       const Palette& palette) {
  std::vector<NamedState> all = states;
  all.push_back({"default and hovered", {.isHovered = true, .isDefault = true}});
  all.push_back({"default and pressed", {.isHovered = true, .isPressed = true, .isDefault = true}});
  std::map<std::vector<std::uint32_t>, std::string> seen;
  for (const NamedState& named : all) {
    ButtonProperties properties = propertiesOf(style, named);
    properties.BackColor = properties.BackOver = back;
    properties.ColorScheme = scheme;
    const ButtonLook look = lookOf(properties, named.state, usual, 96, palette);
    const auto [place, isNew] = seen.emplace(drawn(look).pixels, named.name);
    EXPECT_TRUE(isNew) << styleOf(style).name << " " << named.name << " looks like "
                       << place->second << ", face " << back;
  }
}

TEST(ButtonLook, StatesDifferWhateverTheColors) {
  for (const std::uint32_t accent :
       {0x3D649AU, 0x000000U, 0xFFFFFFU, 0xFFFF00U, 0xE3EBF5U, 0x101010U}) {
    Palette palette;
    palette.accent = rgb(accent);
    for (std::int32_t style = 1; style <= styleCount; ++style) {
      expectStatesApart(style, systemColor(15), 1, palette);
      for (const std::uint32_t back : {0x000000U, 0xFFFFFFU, 0x101010U, 0x3D649AU, 0xFFFF00U}) {
        expectStatesApart(style, toProperty(rgb(back)), 1, palette);
      }
    }
  }
}

TEST(ButtonLook, StatesDifferInTheSystemsColors) { expectStatesApart(2, systemColor(15), 2, {}); }

TEST(ButtonLook, TextCanBeReadInEachStateOfEachStyle) { expectReadableInAllStates({}); }

TEST(ButtonLook, TheFocusIsSeenOnAnyFace) {
  for (std::int32_t style = 1; style <= styleCount; ++style) {
    for (NamedState named : states) {
      if (named.isEnabled) {
        named.state.isFocused = true;
        const ButtonLook look = usualLook(style, named);
        EXPECT_GE(contrast(look.shapes.back().upper, look.face), 3)
            << styleOf(style).name << " " << named.name;
        EXPECT_GT(look.shapes.back().line, 0);
      }
    }
  }
}

TEST(ButtonLook, TheFocusIsNotShownWhenItIsNotWanted) {
  ButtonProperties properties;
  properties.ShowFocusRect = false;
  EXPECT_EQ(lookOf(properties, {.isFocused = true}, usual, 96, {}),
            lookOf(properties, {}, usual, 96, {}));
}

TEST(ButtonLook, ADisabledButtonAnswersNeitherMouseNorFocus) {
  for (std::int32_t style = 1; style <= styleCount; ++style) {
    ButtonProperties properties;
    properties.ButtonType = style;
    properties.Enabled = false;
    const ButtonState touched{.isHovered = true, .isPressed = true, .isFocused = true};
    EXPECT_EQ(lookOf(properties, touched, usual, 96, {}), lookOf(properties, {}, usual, 96, {}))
        << styleOf(style).name;
  }
}

TEST(ButtonLook, TheDefaultStyleIsWhiteWithAThinBorderAndRoundCorners) {
  const ButtonLook look = usualLook(2, states[0]);
  ASSERT_EQ(look.shapes.size(), 2U);
  EXPECT_EQ(look.shapes[0].upper, rgb(0xFFFFFF));
  EXPECT_EQ(look.shapes[0].radius, 5);
  EXPECT_EQ(look.shapes[1].upper, rgb(0xC6D0DC));
  EXPECT_EQ(look.shapes[1].line, 1);
  EXPECT_EQ(look.text, rgb(0x1F2937));
}

TEST(ButtonLook, TheDefaultButtonOfTheDefaultStyleHasTheAccentColor) {
  Palette palette;
  palette.accent = rgb(0x2E7D32);
  const ButtonLook look = lookOf({}, {.isDefault = true}, usual, 96, palette);
  EXPECT_EQ(look.face, palette.accent);
  EXPECT_EQ(look.text, rgb(0xFFFFFF));
}

TEST(ButtonLook, ColorsOfTheNormalAndTheHoveredStateAreTakenFromTheirProperties) {
  ButtonProperties properties;
  properties.BackColor = toProperty(rgb(0x112233));
  properties.BackOver = toProperty(rgb(0xAABBCC));
  properties.ForeColor = toProperty(rgb(0xFFFF00));
  properties.ForeOver = toProperty(rgb(0x330000));
  const ButtonLook normal = lookOf(properties, {}, usual, 96, {});
  EXPECT_EQ(normal.face, rgb(0x112233));
  EXPECT_EQ(normal.text, rgb(0xFFFF00));
  const ButtonLook hovered = lookOf(properties, {.isHovered = true}, usual, 96, {});
  EXPECT_EQ(hovered.face, rgb(0xAABBCC));
  EXPECT_EQ(hovered.text, rgb(0x330000));
}

TEST(ButtonLook, AHoveredButtonDiffersEvenIfBothColorsAreTheSame) {
  for (std::int32_t style = 1; style <= styleCount; ++style) {
    ButtonProperties properties;
    properties.ButtonType = style;
    properties.BackColor = properties.BackOver = 10118205;
    EXPECT_NE(lookOf(properties, {}, usual, 96, {}).face,
              lookOf(properties, {.isHovered = true}, usual, 96, {}).face)
        << styleOf(style).name;
  }
}

TEST(ButtonLook, AStyleWithoutAFaceGetsOneFromItsColor) {
  ButtonProperties properties;
  properties.ButtonType = transparentStyle;
  EXPECT_TRUE(lookOf(properties, {}, usual, 96, {}).shapes.empty());
  properties.BackColor = properties.BackOver = 10118205;
  ASSERT_EQ(lookOf(properties, {}, usual, 96, {}).shapes.size(), 1U);
  EXPECT_EQ(lookOf(properties, {}, usual, 96, {}).shapes[0].upper, rgb(0x3D649A));
}

TEST(ButtonLook, ColorScheme2TakesTheSystemsColorsWhateverTheStyle) {
  Palette palette;
  palette.system = {rgb(0x000000), rgb(0xFFFF00), rgb(0x00FF00), rgb(0x1AEBFF), rgb(0x010101)};
  for (std::int32_t style = 1; style <= styleCount; ++style) {
    ButtonProperties properties;
    properties.ButtonType = style;
    properties.ColorScheme = 2;
    properties.BackColor = 0x123456;
    const ButtonLook normal = lookOf(properties, {}, usual, 96, palette);
    EXPECT_EQ(normal.face, palette.system.face);
    EXPECT_EQ(normal.text, palette.system.text);
    const ButtonLook hovered = lookOf(properties, {.isHovered = true}, usual, 96, palette);
    EXPECT_EQ(hovered.face, palette.system.highlight);
    EXPECT_EQ(hovered.text, palette.system.highlightText);
    properties.Enabled = false;
    EXPECT_EQ(lookOf(properties, {}, usual, 96, palette).text, palette.system.disabledText);
    EXPECT_EQ(outlineRadius(properties, false, 96), 0);
  }
}

TEST(ButtonLook, LengthsGrowWithTheResolution) {
  EXPECT_EQ(outlineRadius({}, false, 96), 5);
  EXPECT_EQ(outlineRadius({}, false, 144), 7.5);
  EXPECT_EQ(outlineRadius({}, false, 192), 10);
  EXPECT_EQ(usualLook(2, states[0], 192).shapes[1].line, 2);
}

TEST(ButtonLook, StyleElevenChangesItsOutlineUnderTheMouse) {
  ButtonProperties properties;
  properties.ButtonType = changingStyle;
  EXPECT_NE(outlineRadius(properties, false, 96), outlineRadius(properties, true, 96));
}

TEST(ButtonLook, ASoftBevelHasLessContrast) {
  ButtonProperties properties;
  properties.ButtonType = 1;
  const ButtonLook hard = lookOf(properties, {}, usual, 96, {});
  properties.SoftBevel = true;
  const ButtonLook soft = lookOf(properties, {}, usual, 96, {});
  ASSERT_EQ(soft.shapes.size(), hard.shapes.size());
  for (std::size_t index = 1; index < hard.shapes.size(); ++index) {
    EXPECT_LT(contrast(soft.shapes[index].upper, soft.face),
              contrast(hard.shapes[index].upper, hard.face));
  }
}

TEST(ButtonStyles, AStyleThatDoesNotExistIsTheDefaultOne) {
  for (const std::int32_t type : {0, -1, 15, 1000}) {
    EXPECT_EQ(&styleOf(type), &styleOf(2));
  }
}

}  // namespace
}  // namespace zelvreg::controls
