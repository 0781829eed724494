// Windows draws the text.
#include "controls/ButtonPainter.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "controls/ButtonStates.h"
#include "controls/ButtonStyles.h"

namespace zelvreg::controls {
namespace {

class ButtonPainter : public ::testing::TestWithParam<int> {
 protected:
  static Bitmap painted(const ButtonProperties& properties, const ButtonState& state, int dpi) {
    const FontHandle font = makeFont(properties.Font, dpi);
    const PaintBuffer buffer({scaled(100, dpi), scaled(32, dpi)});
    buffer.canvas().clear(Palette().ground);
    ButtonSetting setting;
    setting.font = font.get();
    setting.dpi = dpi;
    paintButton(buffer, properties, state, setting);
    return buffer.copy();
  }

  // The rectangle around the pixels of a caption, on a plain white button.
  static Rectangle inked(const std::string& caption, int dpi) {
    ButtonProperties properties;
    const Bitmap without = painted(properties, {}, dpi);
    properties.Caption = caption;
    const Bitmap with = painted(properties, {}, dpi);
    Rectangle ink{with.width, with.height, 0, 0};
    for (int row = 0; row < with.height; ++row) {
      for (int column = 0; column < with.width; ++column) {
        if ((with.at(column, row) & 0xFFFFFF) != (without.at(column, row) & 0xFFFFFF)) {
          ink = {std::min(ink.left, column), std::min(ink.top, row),
                 std::max(ink.right, column + 1), std::max(ink.bottom, row + 1)};
        }
      }
    }
    return ink;
  }
};

TEST_P(ButtonPainter, NoTwoStylesOrStatesHaveEqualPixels) {
  std::map<std::vector<std::uint32_t>, std::string> seen;
  for (std::int32_t style = 1; style <= styleCount; ++style) {
    for (const NamedState& named : states) {
      ButtonProperties properties;
      properties.ButtonType = style;
      properties.Caption = "&Button";
      properties.Enabled = named.isEnabled;
      properties.CheckBoxBehaviour = properties.Value = named.isChecked;
      const std::string name = std::string(styleOf(style).name) + " " + named.name;
      const auto [place, isNew] =
          seen.emplace(painted(properties, named.state, GetParam()).pixels, name);
      EXPECT_TRUE(isNew) << name << " looks like " << place->second;
    }
  }
}

TEST_P(ButtonPainter, ACaptionIsCentered) {
  const int dpi = GetParam();
  const Rectangle ink = inked("OHO", dpi);
  EXPECT_GT(ink.width(), scaled(15, dpi));
  EXPECT_NEAR(ink.left + ink.right, scaled(100, dpi), scaled(4, dpi));
  EXPECT_NEAR(ink.top + ink.bottom, scaled(32, dpi), scaled(4, dpi));
}

TEST_P(ButtonPainter, ACaptionOf300CharactersStaysInside) {
  const int dpi = GetParam();
  const Rectangle ink = inked(std::string(300, 'W'), dpi);
  EXPECT_GE(ink.left, scaled(12, dpi) - 1);
  EXPECT_LE(ink.right, scaled(88, dpi) + 1);
}

TEST_P(ButtonPainter, TheTextGrowsWithTheResolution) {
  const int dpi = GetParam();
  const double share = inked("OHO", dpi).width() / static_cast<double>(inked("OHO", 96).width());
  EXPECT_NEAR(share, dpi / 96.0, 0.2);
}

TEST_P(ButtonPainter, APictureIsLeftOfTheCaption) {
  const int dpi = GetParam();
  Bitmap red(scaled(16, dpi), scaled(16, dpi));
  std::ranges::fill(red.pixels, 0xFFFF0000);
  ButtonProperties properties;
  properties.PictureNormal = std::make_shared<const Bitmap>(red);
  const Bitmap alone = painted(properties, {}, dpi);
  EXPECT_EQ(alone.at(alone.width / 2, alone.height / 2) & 0xFFFFFF, 0xFF0000U);
  properties.Caption = "Start";
  const Bitmap both = painted(properties, {}, dpi);
  int redPixels = 0;
  for (int column = 0; column < both.width / 2; ++column) {
    redPixels += (both.at(column, both.height / 2) & 0xFFFFFF) == 0xFF0000;
  }
  EXPECT_EQ(redPixels, red.width);
}

TEST_P(ButtonPainter, ASystemColorOtherThanTheDefaultIsTheSystems) {
  const int dpi = GetParam();
  const auto middleOf = [dpi](const ButtonProperties& properties) {
    const Bitmap bitmap = painted(properties, {}, dpi);
    return bitmap.at(bitmap.width / 2, bitmap.height / 2) & 0xFFFFFF;
  };
  const auto system = [](int index) { return opaque(fromProperty(GetSysColor(index))) & 0xFFFFFF; };
  ButtonProperties properties;
  EXPECT_EQ(middleOf(properties), 0xFFFFFFU) << "the style's own";
  properties.BackColor = systemColor(COLOR_HIGHLIGHT);
  EXPECT_EQ(middleOf(properties), system(COLOR_HIGHLIGHT));
  Bitmap plain(scaled(16, dpi), scaled(16, dpi));
  std::ranges::fill(plain.pixels, opaque(fromProperty(GetSysColor(COLOR_BTNFACE))));
  properties.PictureNormal = std::make_shared<const Bitmap>(plain);
  EXPECT_EQ(middleOf(properties), system(COLOR_BTNFACE));
  properties.MaskColor = systemColor(COLOR_BTNFACE);
  EXPECT_EQ(middleOf(properties), system(COLOR_HIGHLIGHT));
}

TEST_P(ButtonPainter, ACaptionBelowAPictureDoesNotWrapWithoutRoom) {
  const int dpi = GetParam();
  ButtonProperties properties;
  properties.PictureNormal = std::make_shared<const Bitmap>(scaled(6, dpi), scaled(6, dpi));
  properties.PicturePosition = static_cast<std::int16_t>(PicturePlace::Above);
  const Bitmap empty = painted(properties, {}, dpi);
  properties.Caption = "Manage undo options";
  const Bitmap with = painted(properties, {}, dpi);
  // A second line would push the first one over the picture and itself over the edge.
  for (int row : {scaled(2, dpi), with.height - scaled(2, dpi)}) {
    for (int column = 0; column < with.width; ++column) {
      EXPECT_EQ(with.at(column, row) & 0xFFFFFF, empty.at(column, row) & 0xFFFFFF);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(AtEachResolution, ButtonPainter, ::testing::Values(96, 144, 192));

TEST(MakeIcon, AHalfTransparentColorIsMixedWithTheGround) {
  Bitmap picture(16, 16);
  std::ranges::fill(picture.pixels, 0x80800000);
  HICON icon = makeIcon(picture);
  const PaintBuffer buffer({16, 16});
  buffer.canvas().clear(rgb(0xFFFFFF));
  DrawIconEx(buffer.dc(), 0, 0, icon, 16, 16, 0, nullptr, DI_NORMAL);
  const std::uint32_t pixel = buffer.copy().at(8, 8);
  EXPECT_NEAR(pixel >> 16 & 0xFF, 0xFF, 2);
  EXPECT_NEAR(pixel >> 8 & 0xFF, 0x7F, 2);
  DestroyIcon(icon);
}

TEST(MakeIcon, KeepsThePixelsAndMasksWhatIsTransparent) {
  Bitmap picture(16, 16);
  picture.pixels[0] = 0xFF3D649A;
  HICON icon = makeIcon(picture);
  ASSERT_NE(icon, nullptr);
  const PaintBuffer buffer({16, 16});
  buffer.canvas().clear(rgb(0xFFFFFF));
  DrawIconEx(buffer.dc(), 0, 0, icon, 16, 16, 0, nullptr, DI_NORMAL);
  EXPECT_EQ(buffer.copy().at(0, 0) & 0xFFFFFF, 0x3D649AU);
  EXPECT_EQ(buffer.copy().at(5, 5) & 0xFFFFFF, 0xFFFFFFU);
  DestroyIcon(icon);
}

}  // namespace
}  // namespace zelvreg::controls
