#include <gtest/gtest.h>

#include "desktop/Animation.h"

namespace zelvreg::desktop {
namespace {

TEST(Resized, APixelIsTheMeanOfWhatItCovers) {
  controls::Bitmap picture(2, 2);
  picture.pixels = {0xFF000000, 0xFF0000FF, 0xFF0000FF, 0xFF000000};
  EXPECT_EQ(resized(picture, {1, 1}).at(0, 0), 0xFF000080U);
}

TEST(Resized, TheSameSizeIsTheSamePicture) {
  controls::Bitmap picture(2, 1);
  picture.pixels = {0x80112233, 0};
  EXPECT_EQ(resized(picture, {2, 1}), picture);
}

TEST(Resized, ALargerOneRepeatsItsPixels) {
  controls::Bitmap picture(1, 2);
  picture.pixels = {0xFF112233, 0xFF445566};
  const controls::Bitmap larger = resized(picture, {2, 4});
  EXPECT_EQ(larger.at(1, 1), 0xFF112233U);
  EXPECT_EQ(larger.at(0, 2), 0xFF445566U);
}

}  // namespace
}  // namespace zelvreg::desktop
