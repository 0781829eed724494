#include "desktop/Layout.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace zelvreg::desktop {
namespace {

struct Placed {
  const Control* control;
  Place place;
};

Place placeOf(const Control& control) {
  return {control.left / twipsPerPoint, control.top / twipsPerPoint, control.width / twipsPerPoint,
          control.height / twipsPerPoint};
}

bool overlap(const Place& one, const Place& other) {
  return one.left < other.left + other.width && other.left < one.left + one.width &&
         one.top < other.top + other.height && other.top < one.top + one.height;
}

class LayoutTest : public ::testing::Test {
 protected:
  LayoutTest() { layOut(form); }

  // What stands in each frame; the window itself is null.
  std::map<const Frame*, std::vector<Placed>> contents() {
    std::map<const Frame*, std::vector<Placed>> placed;
    for (const LabelPlace& each : labelPlaces()) {
      placed[each.parent(form)].push_back({&each.label(form), each.place});
    }
    for (const ButtonPlace& each : buttonPlaces()) {
      placed[each.parent(form)].push_back({&each.button(form), each.place});
    }
    placed[&form.Frame1].push_back({&form.View1, placeOf(form.View1)});
    placed[&form.Frame2].push_back({&form.View2, placeOf(form.View2)});
    placed[&form.Frame2].push_back({&form.Picture1, placeOf(form.Picture1)});
    placed[&form.Frame3].push_back({&form.View3, placeOf(form.View3)});
    placed[&form.Frame3].push_back({&form.Check1, placeOf(form.Check1)});
    placed[&form.Frame7].push_back({&form.View4, placeOf(form.View4)});
    placed[&form.Frame8].push_back({&form.Bar1, placeOf(form.Bar1)});
    placed[&form.Frame8].push_back({&form.Gif89a1, placeOf(form.Gif89a1)});
    placed[nullptr].push_back({&form.Frame4, placeOf(form.Frame4)});
    placed[nullptr].push_back({&form.Frame5, placeOf(form.Frame5)});
    placed[nullptr].push_back({&form.Image2, placeOf(form.Image2)});
    placed[nullptr].push_back({&form.Image44.front(), placeOf(form.Image44.front())});
    return placed;
  }

  Form42 form;
};

TEST_F(LayoutTest, NothingStandsOnAnythingElse) {
  for (const auto& [frame, placed] : contents()) {
    for (std::size_t one = 0; one < placed.size(); ++one) {
      for (std::size_t other = one + 1; other < placed.size(); ++other) {
        EXPECT_FALSE(overlap(placed[one].place, placed[other].place))
            << "numbers " << one << " and " << other << " of the frame at "
            << (frame == nullptr ? 0 : frame->top.get() / twipsPerPoint);
      }
    }
  }
}

TEST_F(LayoutTest, EverythingLiesInsideItsFrame) {
  for (const auto& [frame, placed] : contents()) {
    const int width = frame == nullptr ? windowWidth : frame->width / twipsPerPoint;
    const int height = frame == nullptr ? windowHeight : frame->height / twipsPerPoint;
    for (const Placed& each : placed) {
      EXPECT_GE(each.place.left, 0);
      EXPECT_GE(each.place.top, 0);
      EXPECT_LE(each.place.left + each.place.width, width) << each.place.left << " " << width;
      EXPECT_LE(each.place.top + each.place.height, height) << each.place.top << " " << height;
    }
  }
}

TEST_F(LayoutTest, AllSixteenRowsCanBeSeenWithoutScrolling) {
  constexpr int rows = 16;
  constexpr int borders = 2;
  EXPECT_GE(categoryListPlace(form).height, headerHeight + rows * rowHeight + borders);
}

TEST_F(LayoutTest, TheListGivesWayToTheProgressOfAScan) {
  form.Frame8.visible = true;
  const Place list = categoryListPlace(form);
  EXPECT_LE(list.top + list.height, progressPanelPlace().top);
}

TEST_F(LayoutTest, TheWindowHasTheFormsSize) {
  EXPECT_EQ(form.window.width, windowWidth * twipsPerPoint);
  EXPECT_EQ(form.window.height, windowHeight * twipsPerPoint);
}

}  // namespace
}  // namespace zelvreg::desktop
