#include "console/Paint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace zelvreg::console {
namespace {

constexpr std::array colors{Ink::Sure, Ink::Likely, Ink::Unsure, Ink::Error};

// Of one of the 216 colors that stand in a cube behind the first 16.
double luminance(int color) {
  constexpr std::array levels{0, 95, 135, 175, 215, 255};
  const int place = color - 16;
  double sum = 0;
  for (const auto& [step, weight] :
       {std::pair{place / 36, 0.2126}, std::pair{place / 6 % 6, 0.7152},
        std::pair{place % 6, 0.0722}}) {
    const double part = levels.at(static_cast<std::size_t>(step)) / 255.0;
    sum += weight * (part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4));
  }
  return sum;
}

double contrast(double one, double other) {
  return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

TEST(Paint, EachColorCanBeReadOnWhiteAndOnBlack) {
  std::set<int> different;
  for (const Ink ink : colors) {
    EXPECT_GT(contrast(luminance(colorOf(ink)), 1), 3.8) << colorOf(ink);
    EXPECT_GT(contrast(luminance(colorOf(ink)), 0), 3.8) << colorOf(ink);
    different.insert(colorOf(ink));
  }
  EXPECT_EQ(different.size(), colors.size());
}

TEST(Paint, ATextIsColoredOnlyWhereThatIsWanted) {
  EXPECT_EQ(Paint(true).in(Ink::Sure, "sure"), "\x1b[38;5;28msure\x1b[0m");
  EXPECT_EQ(Paint(true).in(Ink::Heading, "Look"), "\x1b[1mLook\x1b[0m");
  EXPECT_EQ(Paint(false).in(Ink::Sure, "sure"), "sure");
  EXPECT_EQ(Paint().in(Ink::Error, "x"), "x");
}

TEST(Paint, TheEnvironmentSwitchesColorsOff) {
  EXPECT_TRUE(environmentAllowsColor(nullptr, nullptr));
  EXPECT_TRUE(environmentAllowsColor("", "xterm"));
  EXPECT_FALSE(environmentAllowsColor("1", "xterm"));
  EXPECT_FALSE(environmentAllowsColor("0", nullptr));
  EXPECT_FALSE(environmentAllowsColor(nullptr, "dumb"));
}

}  // namespace
}  // namespace zelvreg::console
