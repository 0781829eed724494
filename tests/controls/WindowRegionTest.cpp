#include "controls/WindowRegion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "controls/FormShape.h"

namespace zelvreg::controls {
namespace {

TEST(CornerCuts, SquareCornersLoseNothing) { EXPECT_TRUE(cornerCuts({40, 20}, 0).empty()); }

TEST(CornerCuts, AreSmallRectanglesAtAllFourCorners) {
  const std::vector<Rectangle> cuts = cornerCuts({40, 20}, 5);
  ASSERT_FALSE(cuts.empty());
  EXPECT_EQ(cuts.size() % 4, 0U);
  EXPECT_EQ(cuts.front().left, 0);
  EXPECT_EQ(cuts.front().top, 0);
  for (std::size_t index = 0; index < cuts.size(); index += 2) {
    EXPECT_EQ(cuts[index].right, 40 - cuts[index + 1].left);
    EXPECT_EQ(cuts[index].top, 19 - cuts[cuts.size() - 1 - index].top);
  }
}

TEST(CornerCuts, CutOnlyWhatIsWhollyOutside) {
  const Shape shape{0, 0, 40, 20, 7, 0, {}, {}};
  for (const Rectangle& cut : cornerCuts({40, 20}, 7)) {
    for (int column = cut.left; column < cut.right; ++column) {
      EXPECT_EQ(coverage(shape, column + 0.5, cut.top + 0.5), 0);
    }
  }
}

TEST(CornerCuts, CutMoreIfTheOutlineItselfMustBeRound) {
  const std::vector<Rectangle> cuts = cornerCuts({40, 20}, 8, 0.5);
  ASSERT_FALSE(cuts.empty());
  EXPECT_GT(cuts[0].right, cornerCuts({40, 20}, 8)[0].right);
  const Shape shape{0, 0, 40, 20, 8, 0, {}, {}};
  for (const Rectangle& cut : cuts) {
    EXPECT_LE(coverage(shape, cut.left + 0.5, cut.top + 0.5), 0.5);
  }
}

// 'x' is opaque, '.' transparent.
std::vector<Rectangle> partsOf(const std::vector<std::string>& rows) {
  Bitmap bitmap(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()));
  std::size_t index = 0;
  for (const std::string& row : rows) {
    for (const char pixel : row) {
      bitmap.pixels[index++] = pixel == 'x' ? 0x00123456 : 0x00FF00FF;
    }
  }
  return opaqueParts(bitmap, rgb(0xFF00FF));
}

using Parts = std::vector<Rectangle>;

TEST(CornerCuts, TheRounderOnesAreFilledWithTheMaskAndNothingElseIs) {
  constexpr Rgb mask = rgb(0xFF00FF);
  Bitmap bitmap(40, 20);
  Canvas canvas(bitmap);
  maskCorners(canvas, {40, 20}, 8, mask);
  std::size_t cut = 0;
  for (const Rectangle& place : cornerCuts({40, 20}, 8, 0.5)) {
    cut += static_cast<std::size_t>(place.width());
    EXPECT_EQ(bitmap.at(place.left, place.top), opaque(mask));
    EXPECT_EQ(bitmap.at(place.right - 1, place.top), opaque(mask));
  }
  EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(bitmap.pixels, opaque(mask))), cut);
}

TEST(OpaqueParts, AWholePictureIsOneRectangle) {
  EXPECT_EQ(partsOf({"xxx", "xxx"}), (Parts{{0, 0, 3, 2}}));
}

TEST(OpaqueParts, NothingIsLeftOfATransparentPicture) {
  EXPECT_TRUE(partsOf({"..", ".."}).empty());
}

TEST(OpaqueParts, TransparentCornersAreLeftOut) {
  EXPECT_EQ(partsOf({".xx.", "xxxx", "xxxx", ".xx."}),
            (Parts{{1, 0, 3, 1}, {0, 1, 4, 3}, {1, 3, 3, 4}}));
}

TEST(OpaqueParts, AHoleSplitsItsRows) {
  EXPECT_EQ(partsOf({"xxx", "x.x", "x.x", "xxx"}),
            (Parts{{0, 0, 3, 1}, {0, 1, 1, 3}, {2, 1, 3, 3}, {0, 3, 3, 4}}));
}

TEST(OpaqueParts, RunsThatMeetAgainAfterAGapAreTwo) {
  EXPECT_EQ(partsOf({"x", ".", "x"}), (Parts{{0, 0, 1, 1}, {0, 2, 1, 3}}));
}

TEST(FormShape, IsStoredUnderTheNamesOfItsMembers) {
  PropertyBag bag;
  writeFormShape({0x00FF00, false, false}, bag);
  EXPECT_EQ(bag.read("MaskColor", 0), 0x00FF00);
  EXPECT_FALSE(bag.read("Transparent", true));
  EXPECT_FALSE(bag.read("AutoDrag", true));
  EXPECT_EQ(readFormShape(bag), (FormShape{0x00FF00, false, false}));
}

TEST(FormShape, AnEmptyBagYieldsTheDefaults) { EXPECT_EQ(readFormShape({}), FormShape()); }

TEST(FormShape, ASecondControlOnAFormHasAMessageOfFourLines) {
  EXPECT_EQ(secondControlTitle(), "Multiple TransForm Controls");
  EXPECT_EQ(secondControlText(),
            "Only one TransForm control is allowed or \r\nneeded on a single form.\r\n"
            "All TransForm functionality will be disabled \r\nfor this form.");
}

}  // namespace
}  // namespace zelvreg::controls
