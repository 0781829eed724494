#include "controls/ButtonContent.h"

#include <gtest/gtest.h>

namespace zelvreg::controls {
namespace {

constexpr Size button = {120, 40};
constexpr Size picture = {16, 16};
constexpr Size text = {40, 14};

TEST(ButtonContent, PictureAndCaptionAreCenteredAsOneBlock) {
  EXPECT_EQ(placeContent(button, picture, text, PicturePlace::Left, false, 96),
            (ContentPlaces{{28, 12, 44, 28}, {52, 13, 92, 27}}));
  EXPECT_EQ(placeContent(button, picture, text, PicturePlace::Right, false, 96),
            (ContentPlaces{{76, 12, 92, 28}, {28, 13, 68, 27}}));
  EXPECT_EQ(placeContent(button, picture, text, PicturePlace::Above, false, 96),
            (ContentPlaces{{52, 3, 68, 19}, {40, 23, 80, 37}}));
  EXPECT_EQ(placeContent(button, picture, text, PicturePlace::Below, false, 96),
            (ContentPlaces{{52, 21, 68, 37}, {40, 3, 80, 17}}));
  EXPECT_EQ(placeContent(button, picture, text, PicturePlace::Behind, false, 96),
            (ContentPlaces{{52, 12, 68, 28}, {40, 13, 80, 27}}));
}

TEST(ButtonContent, APlaceThatDoesNotExistMeansLeft) {
  EXPECT_EQ(placeContent(button, picture, text, PicturePlace{9}, false, 96),
            placeContent(button, picture, text, PicturePlace::Left, false, 96));
}

TEST(ButtonContent, LeftAlignedContentBeginsAfterTheMargin) {
  const ContentPlaces places = placeContent(button, picture, text, PicturePlace::Left, true, 96);
  EXPECT_EQ(places.picture.left, 12);
  EXPECT_EQ(places.text.left, 36);
}

TEST(ButtonContent, WithoutAPictureTheCaptionIsCentered) {
  EXPECT_EQ(placeContent(button, {}, text, PicturePlace::Left, false, 96).text,
            (Rectangle{40, 13, 80, 27}));
  EXPECT_EQ(captionRoom(button, {}, PicturePlace::Left, 96), (Size{96, 40}));
}

TEST(ButtonContent, TheRoomForTheCaptionGrowsWithTheResolution) {
  EXPECT_EQ(captionRoom(button, picture, PicturePlace::Left, 96), (Size{120 - 24 - 24, 40}));
  EXPECT_EQ(captionRoom({240, 80}, {32, 32}, PicturePlace::Left, 192),
            (Size{2 * (120 - 24 - 24), 80}));
  EXPECT_EQ(captionRoom(button, picture, PicturePlace::Behind, 96), (Size{96, 40}));
  EXPECT_EQ(captionRoom({10, 10}, picture, PicturePlace::Left, 96).width, 0);
}

TEST(ButtonContent, APictureAboveOrBelowLeavesTheCaptionLessHeight) {
  for (const PicturePlace place : {PicturePlace::Above, PicturePlace::Below}) {
    EXPECT_EQ(captionRoom(button, picture, place, 96), (Size{96, 40 - 16 - 4}));
    EXPECT_EQ(captionRoom({240, 80}, {32, 32}, place, 192), (Size{192, 80 - 32 - 8}));
    EXPECT_EQ(captionRoom({10, 10}, picture, place, 96).height, 0);
  }
}

Picture ofPixels(std::vector<std::uint32_t> pixels) {
  Bitmap bitmap(static_cast<int>(pixels.size()), 1);
  bitmap.pixels = std::move(pixels);
  return std::make_shared<const Bitmap>(std::move(bitmap));
}

class ShownPicture : public ::testing::Test {
 protected:
  std::vector<std::uint32_t> pixels(bool isHovered = false) const {
    return shownPicture(properties, {.isHovered = isHovered}, rgb(0x102030))->pixels;
  }

  ButtonProperties properties;
};

TEST_F(ShownPicture, IsNullWithoutAPicture) {
  EXPECT_EQ(shownPicture(properties, {}, {}), nullptr);
}

TEST_F(ShownPicture, TheHoveredStateHasItsOwnOrTheNormalOne) {
  properties.PictureNormal = ofPixels({0xFF000001});
  EXPECT_EQ(pixels(true), pixels(false));
  properties.PictureOver = ofPixels({0xFF000002});
  EXPECT_EQ(pixels(true), std::vector<std::uint32_t>{0xFF000002});
  EXPECT_EQ(pixels(false), std::vector<std::uint32_t>{0xFF000001});
}

TEST_F(ShownPicture, ItsMaskColorIsTransparentUnlessTurnedOff) {
  properties.PictureNormal = ofPixels({0xFFC0C0C0, 0xFF112233});
  EXPECT_EQ(pixels(), (std::vector<std::uint32_t>{0, 0xFF112233}));
  properties.UseMaskColor = false;
  EXPECT_EQ(pixels(), (std::vector<std::uint32_t>{0xFFC0C0C0, 0xFF112233}));
}

TEST_F(ShownPicture, OnlyTheNormalStateIsGray) {
  properties.PictureNormal = ofPixels({0xFFFF0000});
  properties.UseGreyscale = true;
  EXPECT_EQ(pixels(), std::vector<std::uint32_t>{0xFF4D4D4D});
  EXPECT_EQ(pixels(true), std::vector<std::uint32_t>{0xFFFF0000});
}

TEST_F(ShownPicture, TakesTheColorOfTheText) {
  properties.PictureNormal = ofPixels({0xFF000000, 0x80000000, 0});
  properties.SpecialEffect = static_cast<std::int16_t>(PictureEffect::TextColor);
  EXPECT_EQ(pixels(), (std::vector<std::uint32_t>{0xFF102030, 0x80081018, 0}));
}

TEST_F(ShownPicture, IsPaleUntilTheMouseIsOverIt) {
  properties.PictureNormal = ofPixels({0xFF6496C8});
  properties.SpecialEffect = static_cast<std::int16_t>(PictureEffect::Pale);
  EXPECT_EQ(pixels(), std::vector<std::uint32_t>{0x993C5A78});
  EXPECT_EQ(pixels(true), std::vector<std::uint32_t>{0xFF6496C8});
}

TEST_F(ShownPicture, CastsAShadowOfOnePixel) {
  properties.PictureNormal = ofPixels({0xFF6496C8});
  properties.SpecialEffect = static_cast<std::int16_t>(PictureEffect::Shadow);
  const Picture shown = shownPicture(properties, {}, {});
  EXPECT_EQ(shown->width, 2);
  EXPECT_EQ(shown->height, 2);
  EXPECT_EQ(shown->at(0, 0), 0xFF6496C8);
  EXPECT_EQ(shown->at(1, 1), 0x66000000U);
}

TEST_F(ShownPicture, OfADisabledButtonIsGrayAndPale) {
  properties.PictureNormal = ofPixels({0xFFFF0000});
  properties.Enabled = false;
  EXPECT_EQ(pixels(true), std::vector<std::uint32_t>{0x73232323});
}

}  // namespace
}  // namespace zelvreg::controls
