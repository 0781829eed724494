#include "desktop/WindowEdges.h"

#include <gtest/gtest.h>

namespace zelvreg::desktop {
namespace {

Edge at(int x, int y) { return edgeAt({x, y}, 1000, 600, 6, 18); }

TEST(WindowEdges, AnEdgeIsAsThickAsItsReach) {
  EXPECT_EQ(at(0, 300), Edge::Left);
  EXPECT_EQ(at(5, 300), Edge::Left);
  EXPECT_EQ(at(6, 300), Edge::None);
  EXPECT_EQ(at(994, 300), Edge::Right);
  EXPECT_EQ(at(993, 300), Edge::None);
  EXPECT_EQ(at(500, 0), Edge::Top);
  EXPECT_EQ(at(500, 6), Edge::None);
  EXPECT_EQ(at(500, 599), Edge::Bottom);
  EXPECT_EQ(at(500, 593), Edge::None);
}

TEST(WindowEdges, ACornerReachesAlongBothOfItsEdges) {
  EXPECT_EQ(at(0, 0), Edge::TopLeft);
  EXPECT_EQ(at(17, 0), Edge::TopLeft);
  EXPECT_EQ(at(18, 0), Edge::Top);
  EXPECT_EQ(at(0, 17), Edge::TopLeft);
  EXPECT_EQ(at(999, 3), Edge::TopRight);
  EXPECT_EQ(at(982, 3), Edge::TopRight);
  EXPECT_EQ(at(3, 582), Edge::BottomLeft);
  EXPECT_EQ(at(17, 17), Edge::None);
}

TEST(WindowEdges, TheLowerRightCornerIsAWholeSquare) {
  EXPECT_EQ(at(982, 582), Edge::BottomRight);
  EXPECT_EQ(at(981, 582), Edge::None);
  EXPECT_EQ(at(982, 581), Edge::None);
  EXPECT_EQ(at(999, 599), Edge::BottomRight);
}

constexpr Place start{100, 50, 500, 400};
constexpr Place least{0, 0, 450, 380};

TEST(WindowEdges, TheEdgeThatIsDraggedMovesAndTheOthersStay) {
  EXPECT_EQ(draggedBy(start, Edge::Right, {30, 99}, least), (Place{100, 50, 530, 400}));
  EXPECT_EQ(draggedBy(start, Edge::Left, {-30, 99}, least), (Place{70, 50, 530, 400}));
  EXPECT_EQ(draggedBy(start, Edge::Top, {99, -20}, least), (Place{100, 30, 500, 420}));
  EXPECT_EQ(draggedBy(start, Edge::BottomLeft, {-10, 20}, least), (Place{90, 50, 510, 420}));
  EXPECT_EQ(draggedBy(start, Edge::BottomRight, {10, 20}, least), (Place{100, 50, 510, 420}));
  EXPECT_EQ(draggedBy(start, Edge::None, {10, 20}, least), start);
}

TEST(WindowEdges, ATooSmallWindowStopsAtTheEdgeThatStays) {
  EXPECT_EQ(draggedBy(start, Edge::Right, {-400, 0}, least), (Place{100, 50, 450, 400}));
  EXPECT_EQ(draggedBy(start, Edge::TopLeft, {400, 400}, least), (Place{150, 70, 450, 380}));
}

TEST(WindowEdges, AWindowOffTheScreenComesBackAtItsNearestEdge) {
  constexpr Place area{0, 40, 1280, 860};
  EXPECT_EQ(placeInside({100, 50, 500, 400}, area, least), start);
  EXPECT_EQ(placeInside({-3000, -20, 500, 400}, area, least), (Place{0, 40, 500, 400}));
  EXPECT_EQ(placeInside({5000, 5000, 500, 400}, area, least), (Place{780, 500, 500, 400}));
}

TEST(WindowEdges, AWindowIsNeverLargerThanTheScreenNorSmallerThanItsLeast) {
  constexpr Place area{0, 0, 1280, 900};
  EXPECT_EQ(placeInside({10, 10, 4000, 3000}, area, least), (Place{0, 0, 1280, 900}));
  EXPECT_EQ(placeInside({10, 10, 1, -5}, area, least), (Place{10, 10, 450, 380}));
  // A screen that is too small for it.
  EXPECT_EQ(placeInside({10, 10, 500, 400}, {20, 30, 200, 100}, least), (Place{20, 30, 450, 380}));
}

}  // namespace
}  // namespace zelvreg::desktop
