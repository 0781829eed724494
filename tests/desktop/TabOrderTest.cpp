#include "desktop/TabOrder.h"

#include <gtest/gtest.h>

namespace zelvreg::desktop {
namespace {

using Order = std::vector<std::size_t>;

TEST(TabOrder, GoesLineByLineEachFromItsBeginning) {
  EXPECT_EQ(readingOrder({{100, 60, 50, 20}, {0, 60, 50, 20}, {300, 0, 50, 20}, {0, 30, 400, 10}}),
            (Order{2, 3, 1, 0}));
}

TEST(TabOrder, InALineMiddlesMayDifferALittle) {
  // A list to choose from is higher than a box to tick, and begins above it.
  EXPECT_EQ(readingOrder({{200, 4, 50, 24}, {0, 8, 50, 22}, {0, 30, 50, 22}}), (Order{1, 0, 2}));
}

TEST(TabOrder, WhatIsInOnePlaceKeepsItsOrder) {
  EXPECT_EQ(readingOrder({{0, 0, 9, 9}, {0, 0, 9, 9}, {0, 0, 9, 9}}), (Order{0, 1, 2}));
}

TEST(TabOrder, TheMainWindowIsReadAreaByArea) {
  const Place page{216, 124, 790, 450};
  const Place sideBelow{8, 400, 180, 32};
  const Place sideAbove{8, 150, 180, 32};
  const Place command{276, 68, 80, 36};
  const Place title{930, 13, 40, 34};
  EXPECT_EQ(readingOrderOfMainWindow({page, sideBelow, sideAbove, command, title}),
            (Order{4, 3, 2, 1, 0}));
}

}  // namespace
}  // namespace zelvreg::desktop
