// The decoder is the system's.
#include "desktop/Animation.h"

#include <gtest/gtest.h>
#include <windows.h>

// This one needs <windows.h> before it.
#include <objbase.h>

#include <random>

#include "desktop/GifFile.h"
#include "runtime/Environment.h"
#include "runtime/FileText.h"
#include "text/Wide.h"

namespace zelvreg::desktop {
namespace {

using fixture::GifFile;
using fixture::GifFrame;

constexpr const char* path = "animation-test.gif";
constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t blue = 0xFF0000FF;

class AnimationTest : public ::testing::Test {
 protected:
  AnimationTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~AnimationTest() override {
    DeleteFileW(Wide(path).get());
    CoUninitialize();
  }

  static Animation read(const std::string& bytes) {
    EXPECT_TRUE(replaceFileText(path, bytes));
    return readAnimation(path);
  }

  // Two frames, the second a part of the first.
  static GifFile sound() {
    GifFile gif(3, 2);
    gif.add({.width = 3, .height = 2, .color = GifFile::red, .delay = 7});
    gif.add({.left = 1, .top = 1, .width = 2, .height = 1, .color = GifFile::blue});
    return gif;
  }
};

TEST_F(AnimationTest, FramesAreWholePicturesWithDelays) {
  const Animation animation = read(sound().bytes());
  ASSERT_EQ(animation.size(), 2U);
  EXPECT_EQ(animation[0].picture.width, 3);
  EXPECT_EQ(animation[0].picture.pixels, std::vector<std::uint32_t>(6, red));
  EXPECT_EQ(animation[0].milliseconds, 70U);
  EXPECT_EQ(animation[1].picture.pixels,
            (std::vector<std::uint32_t>{red, red, red, red, blue, blue}));
  EXPECT_EQ(animation[1].milliseconds, 100U);
}

TEST_F(AnimationTest, TheProgramsOwnIsShownWhole) {
  const Animation animation = readAnimation(programFolder() + "\\search.gif");
  ASSERT_EQ(animation.size(), 16U);
  EXPECT_EQ(animation.back().picture.width, 144);
  EXPECT_EQ(animation.back().picture.height, 144);
}

TEST_F(AnimationTest, AMissingFileHasNoFrames) {
  EXPECT_TRUE(readAnimation("").empty());
  EXPECT_TRUE(readAnimation("no such file.gif").empty());
  EXPECT_TRUE(readAnimation(programFolder()).empty());
  EXPECT_TRUE(read("").empty());
}

TEST_F(AnimationTest, AFrameIsClippedToThePicture) {
  GifFile gif(3, 2);
  gif.add({.left = 2, .top = 1, .width = 4, .height = 4, .color = GifFile::blue});
  const Animation animation = read(gif.bytes());
  ASSERT_EQ(animation.size(), 1U);
  EXPECT_EQ(animation[0].picture.pixels, (std::vector<std::uint32_t>{0, 0, 0, 0, 0, blue}));
}

TEST_F(AnimationTest, AFrameFarOutsideDoesNotChangeThePicture) {
  GifFile gif(3, 2);
  gif.add({.left = 65535, .top = 65535, .disposal = 2});
  gif.add({.left = 65535});
  const Animation animation = read(gif.bytes());
  ASSERT_EQ(animation.size(), 2U);
  for (const AnimationFrame& frame : animation) {
    EXPECT_EQ(frame.picture, controls::Bitmap(3, 2));
  }
}

TEST_F(AnimationTest, APictureThatClaimsToBeHugeIsNotShown) {
  for (const auto& [width, height] : {std::pair{65535, 65535}, {513, 1}, {1, 513}}) {
    GifFile gif(width, height);
    gif.add({});
    EXPECT_TRUE(read(gif.bytes()).empty()) << width << " x " << height;
  }
}

TEST_F(AnimationTest, ReadingStopsAtAHugeFrame) {
  GifFile gif = sound();
  gif.addHead({.width = 513, .height = 513});
  EXPECT_LE(read(gif.bytes()).size(), 2U);
}

TEST_F(AnimationTest, APictureWithoutPixelsIsNotShown) {
  for (const auto& [width, height] : {std::pair{0, 0}, {0, 2}, {2, 0}}) {
    GifFile gif(width, height);
    gif.add({});
    EXPECT_TRUE(read(gif.bytes()).empty()) << width << " x " << height;
  }
  GifFile gif(2, 2);
  gif.addHead({.width = 0, .height = 0});
  EXPECT_TRUE(read(gif.bytes()).empty());
}

TEST_F(AnimationTest, APictureWithoutFramesIsNotShown) {
  EXPECT_TRUE(read(GifFile(3, 2).bytes()).empty());
}

TEST_F(AnimationTest, OnlyTheFirstOfManyFramesAreRead) {
  GifFile gif(1, 1);
  for (int number = 0; number < 5000; ++number) {
    gif.add({});
  }
  EXPECT_EQ(read(gif.bytes()).size(), 200U);
}

TEST_F(AnimationTest, OfLargeFramesFewerAreReadToSaveMemory) {
  GifFile gif(512, 512);
  for (int number = 0; number < 100; ++number) {
    gif.add({});
  }
  EXPECT_EQ(read(gif.bytes()).size(), 64U);
}

TEST_F(AnimationTest, AFileThatIsTooLargeIsNotRead) {
  EXPECT_TRUE(read(sound().bytes() + std::string(4 << 20, '\0')).empty());
}

TEST_F(AnimationTest, OtherFormatsAreNotDecoded) {
  // A valid bitmap of one pixel.
  std::string bitmap(58, '\0');
  bitmap.replace(0, 3, "BM\x3A");
  bitmap[10] = 54;
  bitmap[14] = 40;
  bitmap[18] = bitmap[22] = bitmap[26] = 1;
  bitmap[28] = 24;
  EXPECT_TRUE(read(bitmap).empty());
  EXPECT_TRUE(read("This is a text.").empty());
  EXPECT_TRUE(read(std::string("\x89PNG\r\n\x1A\n", 8)).empty());
}

TEST_F(AnimationTest, ATruncatedFileGivesOnlyWhatItHolds) {
  const std::string whole = sound().bytes();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_LE(read(whole.substr(0, length)).size(), 2U) << length;
  }
}

TEST_F(AnimationTest, ADamagedFileGivesFramesWithinTheLimits) {
  const std::string whole = sound().bytes();
  std::minstd_rand random(1);  // the same damage each time
  for (int number = 0; number < 1000; ++number) {
    std::string damaged = whole;
    for (int count = 0; count < 3; ++count) {
      damaged[random() % damaged.size()] = static_cast<char>(random());
    }
    for (const AnimationFrame& frame : read(damaged)) {
      EXPECT_LE(frame.picture.width, 512);
      EXPECT_LE(frame.picture.height, 512);
    }
  }
}

}  // namespace
}  // namespace zelvreg::desktop
