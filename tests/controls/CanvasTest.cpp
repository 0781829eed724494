#include "controls/Canvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace zelvreg::controls {
namespace {

constexpr std::uint32_t white = 0xFFFFFFFF;

Bitmap whiteBitmap(int width, int height) {
  Bitmap bitmap(width, height);
  Canvas(bitmap).clear(rgb(0xFFFFFF));
  return bitmap;
}

Shape filled(double left, double top, double right, double bottom, double radius = 0) {
  return {left, top, right, bottom, radius, 0, rgb(0x000000), rgb(0x000000)};
}

// A picture whose left pixel is black and whose right one is white.
Bitmap blackAndWhite() {
  Bitmap picture(2, 1);
  picture.pixels = {0xFF000000, white};
  return picture;
}

TEST(Canvas, AMirroredOneCountsFromItsRightEdgeAndKeepsPicturesAsTheyAre) {
  Bitmap bitmap(6, 1);
  Canvas canvas(bitmap.pixels, 6, 1, true);
  canvas.clear(rgb(0xFFFFFF));
  canvas.fill({0, 0, 1, 1}, rgb(0xFF0000));
  canvas.draw(blackAndWhite(), 3, 0);
  const std::vector<std::uint32_t> expected{white, 0xFF000000, white, white, white, 0xFFFF0000};
  EXPECT_EQ(bitmap.pixels, expected);
}

TEST(Canvas, AMirroredPictureHasItsSidesExchanged) {
  const std::vector<std::uint32_t> expected{white, 0xFF000000};
  EXPECT_EQ(mirrored(blackAndWhite()).pixels, expected);
}

TEST(Canvas, ASquareRectangleOnWholePixelsIsSharp) {
  Bitmap bitmap = whiteBitmap(4, 4);
  Canvas(bitmap).draw(filled(1, 1, 3, 3));
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      const bool isInside = row >= 1 && row <= 2 && column >= 1 && column <= 2;
      EXPECT_EQ(bitmap.at(column, row), isInside ? 0xFF000000 : white);
    }
  }
}

TEST(Canvas, ARectangleIsFilledToItsEdgesAndClippedToTheCanvas) {
  Bitmap bitmap = whiteBitmap(4, 4);
  Canvas(bitmap).fill({2, -1, 9, 3}, rgb(0x102030));
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      EXPECT_EQ(bitmap.at(column, row), column >= 2 && row < 3 ? 0xFF102030 : white);
    }
  }
}

TEST(Canvas, AnOutlineIsInsideItsRectangle) {
  Bitmap bitmap = whiteBitmap(5, 5);
  Shape outline = filled(0, 0, 5, 5);
  outline.line = 1;
  Canvas(bitmap).draw(outline);
  EXPECT_EQ(bitmap.at(0, 0), 0xFF000000);
  EXPECT_EQ(bitmap.at(4, 2), 0xFF000000);
  EXPECT_EQ(bitmap.at(1, 1), white);
  EXPECT_EQ(bitmap.at(2, 2), white);
}

TEST(Canvas, ARoundCornerIsSmoothAndTheSameOnAllFourSides) {
  Bitmap bitmap = whiteBitmap(12, 12);
  Canvas(bitmap).draw(filled(0, 0, 12, 12, 5));
  EXPECT_EQ(bitmap.at(0, 0), white);
  EXPECT_EQ(bitmap.at(6, 0), 0xFF000000);
  int greys = 0;
  for (int row = 0; row < 12; ++row) {
    for (int column = 0; column < 12; ++column) {
      const std::uint32_t pixel = bitmap.at(column, row);
      greys += pixel != white && pixel != 0xFF000000;
      EXPECT_EQ(pixel, bitmap.at(11 - column, row));
      EXPECT_EQ(pixel, bitmap.at(column, 11 - row));
      EXPECT_EQ(pixel, bitmap.at(row, column));
    }
  }
  EXPECT_GE(greys, 12);
}

TEST(Canvas, TheShareOfACircleIsItsArea) {
  const Shape circle = filled(0, 0, 40, 40, 1000);
  double area = 0;
  for (int row = 0; row < 40; ++row) {
    for (int column = 0; column < 40; ++column) {
      area += coverage(circle, column + 0.5, row + 0.5);
    }
  }
  EXPECT_NEAR(area, 3.14159265 * 20 * 20, 2);
}

TEST(Canvas, ColorsRunFromTopToBottom) {
  Bitmap bitmap = whiteBitmap(1, 4);
  Canvas(bitmap).draw(Shape{0, 0, 1, 4, 0, 0, rgb(0x000000), rgb(0x808080)});
  EXPECT_EQ(bitmap.at(0, 0), 0xFF101010);
  EXPECT_EQ(bitmap.at(0, 3), 0xFF707070);
}

TEST(Canvas, OpacityMixesWithWhatIsThere) {
  Bitmap bitmap = whiteBitmap(1, 1);
  Shape half = filled(0, 0, 1, 1);
  half.opacity = 0.5;
  Canvas(bitmap).draw(half);
  EXPECT_EQ(bitmap.at(0, 0), 0xFF808080);
}

TEST(Canvas, ShapesAndPicturesAreClippedAtTheEdges) {
  Bitmap bitmap = whiteBitmap(2, 2);
  Canvas canvas(bitmap);
  canvas.draw(filled(-5, -5, 1, 1));
  canvas.draw(filled(7, 7, 9, 9));
  canvas.draw(Stroke{-3, 1.5, 9, 1.5, 1}, rgb(0x00FF00));
  Bitmap red(3, 3);
  red.pixels.assign(9, 0xFFFF0000);
  canvas.draw(red, 1, -2);
  EXPECT_EQ(bitmap.at(0, 0), 0xFF000000);
  EXPECT_EQ(bitmap.at(1, 0), 0xFFFF0000);
  EXPECT_EQ(bitmap.at(0, 1), 0xFF00FF00);
  EXPECT_EQ(bitmap.at(1, 1), 0xFF00FF00);
}

TEST(Canvas, AnEmptyShapeDrawsNothing) {
  Bitmap bitmap = whiteBitmap(2, 2);
  Canvas(bitmap).draw(filled(1, 0, 1, 2));
  EXPECT_EQ(bitmap, whiteBitmap(2, 2));
}

TEST(Canvas, APictureIsBlendedByItsAlpha) {
  Bitmap bitmap = whiteBitmap(2, 1);
  Bitmap picture(2, 1);
  picture.pixels = {0x80800000, 0x00000000};
  Canvas(bitmap).draw(picture, 0, 0);
  EXPECT_EQ(bitmap.at(0, 0), 0xFFFF7F7F);
  EXPECT_EQ(bitmap.at(1, 0), white);
}

TEST(Canvas, TheMiddleOfAPixelDecidesHowItIsCovered) {
  std::minstd_rand random(7);
  const auto between = [&random](double from, double to) {
    return from + (to - from) * static_cast<double>(random() % 1000) / 1000;
  };
  constexpr int length = 40;
  constexpr Rgb white = rgb(0xFFFFFF);
  for (int turn = 0; turn < 400; ++turn) {
    const bool isWhole = turn % 4 == 0;
    const auto place = [&](double value) { return isWhole ? std::floor(value) : value; };
    Shape shape{place(between(-10, 30)), place(between(-10, 30)), 0, 0, 0, 0, white, white};
    shape.right = shape.left + place(between(-2, 45));
    shape.bottom = shape.top + place(between(-2, 45));
    shape.radius = turn % 3 == 0 ? 0 : between(0, 15);
    shape.line = turn % 5 < 3 ? 0 : between(0, 6);
    shape.opacity = turn % 7 == 0 ? 0.4 : 1;
    Bitmap bitmap(length, length);
    Canvas canvas(bitmap);
    canvas.clear(rgb(0x000000));
    canvas.draw(shape);
    for (int row = 0; row < length; ++row) {
      for (int column = 0; column < length; ++column) {
        const double share = coverage(shape, column + 0.5, row + 0.5) * shape.opacity;
        const auto expected = static_cast<std::uint32_t>(std::lround(255 * share));
        ASSERT_EQ(bitmap.at(column, row) & 0xFF, expected)
            << "shape " << turn << ", column " << column << ", row " << row;
      }
    }
  }
}

TEST(Canvas, LengthsAreScaledToTheResolution) {
  EXPECT_EQ(scaled(32, 96), 32);
  EXPECT_EQ(scaled(32, 144), 48);
  EXPECT_EQ(scaled(1, 144), 2);
  EXPECT_EQ(scaled(32, 192), 64);
}

TEST(Color, PropertiesHaveRedInTheLowestByte) {
  EXPECT_EQ(fromProperty(10118205), rgb(0x3D649A));
  EXPECT_EQ(toProperty(rgb(0x3D649A)), 10118205U);
  EXPECT_TRUE(isSystemColor(systemColor(15)));
  EXPECT_FALSE(isSystemColor(10118205));
}

TEST(Color, MixesByShareFromZeroToOne) {
  EXPECT_EQ(mix(rgb(0x000000), rgb(0xFFFFFF), 0.5), rgb(0x808080));
  EXPECT_EQ(mix(rgb(0x102030), rgb(0xFFFFFF), -1), rgb(0x102030));
  EXPECT_EQ(mix(rgb(0x102030), rgb(0xFFFFFF), 2), rgb(0xFFFFFF));
}

TEST(Color, ContrastRunsFromOneToTwentyOne) {
  EXPECT_NEAR(contrast(rgb(0x000000), rgb(0xFFFFFF)), 21, 0.001);
  EXPECT_NEAR(contrast(rgb(0x777777), rgb(0xFFFFFF)), 4.48, 0.01);
  EXPECT_EQ(contrast(rgb(0x3D649A), rgb(0x3D649A)), 1);
}

}  // namespace
}  // namespace zelvreg::controls
