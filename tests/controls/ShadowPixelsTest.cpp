#include "controls/ShadowPixels.h"

#include <gtest/gtest.h>

namespace zelvreg::controls {
namespace {

constexpr ShadowSettings settings = {10, 0x808080, 100, 2};

TEST(ShadowAlpha, FallsFromTheWindowToItsEnd) {
  EXPECT_EQ(shadowAlpha(0, settings), 100);
  EXPECT_EQ(shadowAlpha(-3, settings), 100);
  EXPECT_EQ(shadowAlpha(5, settings), 25);
  EXPECT_EQ(shadowAlpha(10, settings), 0);
  for (int distance = 0; distance < 10; ++distance) {
    EXPECT_GT(shadowAlpha(distance, settings), shadowAlpha(distance + 1, settings));
  }
}

TEST(ShadowAlpha, StaysWithinItsLimits) {
  EXPECT_EQ(shadowAlpha(0, {10, 0, 1000, 0}), 255);
  EXPECT_EQ(shadowAlpha(0, {10, 0, -5, 0}), 0);
  EXPECT_EQ(shadowAlpha(0, {0, 0, 100, 0}), 0);
}

TEST(ShadowPixel, IsMultipliedByItsAlphaAndInTheOrderOfThePixels) {
  EXPECT_EQ(shadowPixel(255, {10, 0x0000FF, 255, 0}), 0xFFFF0000);
  EXPECT_EQ(shadowPixel(128, {10, 0xFF0000, 255, 0}), 0x80000080);
  EXPECT_EQ(shadowPixel(0, settings), 0U);
}

TEST(ShadowCorner, IsRoundAndTheSameAcrossItsDiagonal) {
  const Bitmap corner = shadowCorner(settings);
  ASSERT_EQ(corner.width, 10);
  EXPECT_EQ(corner.at(0, 0), 0U);
  for (int row = 0; row < 10; ++row) {
    for (int column = 0; column < 10; ++column) {
      EXPECT_EQ(corner.at(column, row), corner.at(row, column));
    }
  }
}

TEST(ShadowCorner, ItsLastRowAndColumnContinueAlongTheEdges) {
  const Bitmap corner = shadowCorner(settings);
  for (int step = 0; step < 10; ++step) {
    EXPECT_EQ(corner.at(9, step), shadowPixel(shadowAlpha(9.5 - step, settings), settings));
  }
}

TEST(ShadowCorner, WithoutASizeThereIsNone) {
  EXPECT_TRUE(shadowCorner({0, 0, 100, 0}).pixels.empty());
  EXPECT_TRUE(shadowCorner({-4, 0, 100, 0}).pixels.empty());
}

TEST(ShadowPlace, SurroundsTheWindowAndIsALittleLower) {
  EXPECT_EQ(shadowPlace({100, 50, 300, 250}, settings), (Rectangle{90, 42, 310, 262}));
}

}  // namespace
}  // namespace zelvreg::controls
