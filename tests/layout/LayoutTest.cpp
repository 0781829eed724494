#include "layout/Layout.h"

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <vector>

#include "form/Form42.h"

namespace zelvreg::desktop {
namespace {

struct Placed {
  const Control* control;
  Place place;
};

Place placeOf(const Control& control) {
  return {control.left / twipsPerPixel, control.top / twipsPerPixel, control.width / twipsPerPixel,
          control.height / twipsPerPixel};
}

bool overlap(const Place& one, const Place& other) {
  return one.left < other.left + other.width && other.left < one.left + one.width &&
         one.top < other.top + other.height && other.top < one.top + one.height;
}

class LayoutTest : public ::testing::Test {
 protected:
  LayoutTest() { layOut(form); }

  // The places in each frame; the window itself is null.
  std::map<const Frame*, std::vector<Placed>> contents() {
    std::map<const Frame*, std::vector<Placed>> placed;
    for (const LabelPlace& each : labelPlaces()) {
      // This one is shown in place of another.
      if (&each.label(form) != &form.OutcomeText) {
        placed[each.parent(form)].push_back({&each.label(form), each.place});
      }
    }
    for (const ButtonPlace& each : buttonPlaces()) {
      placed[each.parent(form)].push_back({&each.button(form), each.place});
    }
    placed[&form.Frame1].push_back({&form.View1, placeOf(form.View1)});
    placed[&form.Frame1].push_back({&form.CarefulBox, placeOf(form.CarefulBox)});
    placed[&form.Frame2].push_back({&form.View2, placeOf(form.View2)});
    placed[&form.Frame2].push_back({&form.FilterBox, placeOf(form.FilterBox)});
    placed[&form.Frame2].push_back({&form.Picture1, placeOf(form.Picture1)});
    placed[&form.Frame3].push_back({&form.View3, placeOf(form.View3)});
    placed[&form.Frame3].push_back({&form.Check1, placeOf(form.Check1)});
    placed[&form.Frame3].push_back({&form.ToolbarBox, placeOf(form.ToolbarBox)});
    placed[&form.Frame3].push_back({&form.cboTheme, placeOf(form.cboTheme)});
    placed[&form.Picture1].push_back({&form.Image1, placeOf(form.Image1)});
    placed[&form.Picture1].push_back({&form.Image3, placeOf(form.Image3)});
    placed[nullptr].push_back({&form.Image14, placeOf(form.Image14)});
    for (const CheckBox& box : form.SafeguardBoxes) {
      placed[&form.Frame3].push_back({&box, placeOf(box)});
    }
    placed[&form.Frame7].push_back({&form.View4, placeOf(form.View4)});
    placed[&form.Frame8].push_back({&form.Bar1, placeOf(form.Bar1)});
    placed[&form.Frame8].push_back({&form.Gif89a1, placeOf(form.Gif89a1)});
    placed[nullptr].push_back({&form.cboFind, placeOf(form.cboFind)});
    placed[nullptr].push_back({&form.Frame4, placeOf(form.Frame4)});
    placed[nullptr].push_back({&form.Frame5, placeOf(form.Frame5)});
    placed[nullptr].push_back({&form.Image2, placeOf(form.Image2)});
    placed[nullptr].push_back({&form.Image44.front(), placeOf(form.Image44.front())});
    return placed;
  }

  Form42 form;
};

TEST_F(LayoutTest, NothingOverlaps) {
  for (const auto& [frame, placed] : contents()) {
    for (std::size_t one = 0; one < placed.size(); ++one) {
      for (std::size_t other = one + 1; other < placed.size(); ++other) {
        EXPECT_FALSE(overlap(placed[one].place, placed[other].place))
            << "numbers " << one << " and " << other << " of the frame at "
            << (frame == nullptr ? 0 : frame->top.get() / twipsPerPixel);
      }
    }
  }
}

TEST_F(LayoutTest, EverythingIsInsideItsFrame) {
  for (const auto& [frame, placed] : contents()) {
    const int width = frame == nullptr ? windowWidth : frame->width / twipsPerPixel;
    const int height = frame == nullptr ? windowHeight : frame->height / twipsPerPixel;
    for (const Placed& each : placed) {
      EXPECT_GE(each.place.left, 0);
      EXPECT_GE(each.place.top, 0);
      EXPECT_LE(each.place.left + each.place.width, width) << each.place.left << " " << width;
      EXPECT_LE(each.place.top + each.place.height, height) << each.place.top << " " << height;
    }
  }
}

TEST_F(LayoutTest, SixteenBarsHaveRoomInThePanelOfTheDetails) {
  constexpr std::size_t count = 16;
  for (std::size_t one = 0; one < count; ++one) {
    const Place place = barPlace(form, one);
    EXPECT_GE(place.left, 1);
    EXPECT_LT(place.left + place.width, placeOf(form.Picture1).width);
    EXPECT_LT(place.top + place.height, placeOf(form.Picture1).height);
    for (std::size_t other = one + 1; other < count; ++other) {
      EXPECT_FALSE(overlap(place, barPlace(form, other))) << one << " and " << other;
    }
  }
}

TEST_F(LayoutTest, TheBarsTakeTheWidthOfALargerWindow) {
  constexpr int wider = 400;
  constexpr std::size_t lastOfLine = 3;
  const Place before = barPlace(form, lastOfLine);
  const int border = placeOf(form.Picture1).width - (before.left + before.width);
  form.window.width = (windowWidth + wider) * twipsPerPixel;
  followSize(form);
  const Place place = barPlace(form, lastOfLine);
  EXPECT_EQ(place.width, before.width + wider / 4);
  EXPECT_EQ(placeOf(form.Picture1).width - (place.left + place.width), border);
  EXPECT_EQ(barPlace(form, 0).left, border);
}

TEST_F(LayoutTest, AllSixteenRowsCanBeSeenWithoutScrolling) {
  constexpr int rows = 16;
  constexpr int borders = 2;
  EXPECT_GE(categoryListPlace(form).height, headerHeight + rows * rowHeight + borders);
}

TEST_F(LayoutTest, TheListMakesRoomForTheProgressOfAScan) {
  form.Frame8.visible = true;
  const Place list = categoryListPlace(form);
  EXPECT_LE(list.top + list.height, progressPanelPlace(form).top);
  EXPECT_FALSE(overlap(placeOf(form.CarefulBox), progressPanelPlace(form)));
}

TEST_F(LayoutTest, EachControlIsInTheFrameThatItBelongsTo) {
  struct Belonging {
    const Control& control;
    const Frame* frame;  // null for the window itself
  };
  const Belonging table[] = {
      {form.Frame8, &form.Frame1},
      {form.Picture1, &form.Frame2},
      {form.Frame1, nullptr},
      {form.Frame2, nullptr},
      {form.Frame3, nullptr},
      {form.Frame7, nullptr},
      {form.Frame4, nullptr},
      {form.Frame5, nullptr},
      {form.pictrlang, nullptr},
      {form.Label1, nullptr},
      {form.Label8[6], nullptr},
      {form.Label2[0], &form.Frame1},
      {form.Label2[1], &form.Frame1},
      {form.Label2[3], &form.Frame8},
      {form.Label2[4], &form.Frame8},
      {form.Label2[5], &form.Frame8},
      {form.Label3, &form.Frame8},
      {form.Label4, &form.Frame8},
      {form.ProgressText, &form.Frame8},
      {form.Label10, &form.Frame2},
      {form.OutcomeText, &form.Frame2},
      {form.FilterText, &form.Frame2},
      {form.UndoRepair, &form.Frame2},
      {form.Label5, &form.Picture1},
      {form.Label6, &form.Picture1},
      {form.Label7, &form.Picture1},
      {form.EvidenceText, &form.Picture1},
      {form.chameleonButton4, nullptr},
      {form.chameleonButton23, nullptr},
      {form.chameleonButton13, nullptr},
      {form.chameleonButton18, nullptr},
      {form.MaximizeButton, nullptr},
      {form.cmd_search, nullptr},
      {form.cmd_exclud, nullptr},
      {form.cmd_start, nullptr},
      {form.cmd_fix, nullptr},
      {form.cmd_cancel, nullptr},
      {form.cmd_all, nullptr},
      {form.cmd_non, nullptr},
      {form.cmd_report, nullptr},
      {form.orubutton4, nullptr},
      {form.chameleonButton1, nullptr},
      {form.orubutton3, nullptr},
      {form.chameleonButton7, nullptr},
      {form.orubutton1, nullptr},
      {form.chameleonButton10, nullptr},
      {form.chameleonButton11, nullptr},
      {form.cmdFind, nullptr},
      {form.chameleonButton21, &form.Frame1},
      {form.chameleonButton22, &form.Frame1},
      {form.chameleonButton12, &form.Frame8},
      {form.Command28, &form.Picture1},
      {form.chameleonButton14, &form.Frame2},
      {form.chameleonButton15, &form.Frame2},
      {form.chameleonButton16, &form.Frame2},
      {form.chameleonButton17, &form.Frame2},
      {form.orubutton2, &form.Frame2},
      {form.chameleonButton9, &form.Frame2},
      {form.chameleonButton2, &form.Frame3},
      {form.chameleonButton3, &form.Frame3},
      {form.chameleonButton5, &form.Frame7},
      {form.chameleonButton6, &form.Frame7},
      {form.chameleonButton8, &form.Frame7},
  };
  std::map<const Control*, const Frame*> parents;
  for (const FramePlace& each : framePlaces()) {
    parents[&each.frame(form)] = each.parent(form);
  }
  for (const LabelPlace& each : labelPlaces()) {
    parents[&each.label(form)] = each.parent(form);
  }
  for (const ButtonPlace& each : buttonPlaces()) {
    parents[&each.button(form)] = each.parent(form);
  }
  for (std::size_t row = 0; row < std::size(table); ++row) {
    const auto found = parents.find(&table[row].control);
    ASSERT_NE(found, parents.end()) << "row " << row << " has no place";
    EXPECT_EQ(found->second, table[row].frame) << "row " << row;
  }
}

TEST_F(LayoutTest, TheWindowFollowsTheResolutionAsFarAsTheScreenHasRoom) {
  constexpr int roomy = 5000;
  EXPECT_EQ(fittingResolution(96, roomy, roomy), 96);
  EXPECT_EQ(fittingResolution(192, roomy, roomy), 192);
  // 150 % on a screen of 1920 by 1080 with a taskbar.
  EXPECT_EQ(fittingResolution(144, 1920, 1040), 144);
  // 150 % on 1366 by 768: the title must not leave the screen.
  const int fitting = fittingResolution(144, 1366, 728);
  EXPECT_LT(fitting, 144);
  EXPECT_LE(windowHeight * fitting / 96, 728);
  EXPECT_GT(windowHeight * (fitting + 1) / 96, 728);
  EXPECT_LE(windowWidth * fittingResolution(192, 1500, roomy) / 96, 1500);
  // Smaller than this it is not readable.
  EXPECT_EQ(fittingResolution(120, 800, 600), 96);
  EXPECT_EQ(fittingResolution(120, 800, 600, 520, 200), 120) << "a small window";
}

TEST_F(LayoutTest, TheYearHasTwoPlacesAndWhatStandsForItselfIsShown) {
  for (const Control* shown :
       {static_cast<Control*>(&form.Label12[2]), static_cast<Control*>(&form.Label12[3]),
        static_cast<Control*>(&form.Label2[2]), static_cast<Control*>(&form.Image3),
        static_cast<Control*>(&form.Image14)}) {
    EXPECT_TRUE(shown->visible);
    EXPECT_GT(shown->width, 0);
  }
  EXPECT_FALSE(form.Toolbar1.visible);
}

TEST_F(LayoutTest, TheCopyrightSignIsUtf8) { EXPECT_EQ(form.Label12[0].caption.get(), "\xC2\xA9"); }

TEST_F(LayoutTest, APlaceStaysMovesOrStretchesWithWhatItIsIn) {
  constexpr Place place{10, 20, 30, 40};
  constexpr Growth growth{100, 7};
  EXPECT_EQ(placeIn(place, {}, growth), place);
  EXPECT_EQ(placeIn(place, {.across = Follows::Moves, .down = Follows::Stretches}, growth),
            (Place{110, 20, 30, 47}));
  EXPECT_EQ(placeIn(place, {.across = Follows::Stretches, .down = Follows::Moves}, growth),
            (Place{10, 27, 130, 40}));
}

TEST_F(LayoutTest, InALargerWindowPagesListsAndPanelsTakeTheRoom) {
  struct Taking {
    const Control& control;
    Place more;  // than in the layout
  };
  const Taking table[] = {
      {form.Frame1, {0, 0, 200, 100}},
      {form.Frame2, {0, 0, 200, 100}},
      {form.Frame3, {0, 0, 200, 100}},
      {form.Frame7, {0, 0, 200, 100}},
      {form.Frame8, {0, 100, 200, 0}},
      {form.Picture1, {0, 100, 200, 0}},
      {form.View1, {0, 0, 200, 100}},
      {form.View2, {0, 0, 200, 100}},
      {form.View3, {0, 0, 200, 100}},
      {form.View4, {0, 0, 200, 100}},
      {form.Label7, {0, 0, 200, 0}},
      {form.EvidenceText, {0, 0, 200, 0}},
      {form.Bar1, {0, 0, 200, 0}},
      {form.Label1, {0, 0, 200, 0}},
      {form.chameleonButton4, {200, 0, 0, 0}},
      {form.MaximizeButton, {200, 0, 0, 0}},
      {form.Label12[2], {0, 100, 0, 0}},
      {form.Label12[1], {200, 100, 0, 0}},
      {form.chameleonButton2, {0, 100, 0, 0}},
      {form.chameleonButton10, {0, 100, 0, 0}},
      {form.chameleonButton12, {200, 0, 0, 0}},
      {form.orubutton4, {0, 0, 0, 0}},
      {form.pictrlang, {200, 0, 0, 0}},
  };
  std::vector<Place> before;
  for (const Taking& each : table) {
    before.push_back(placeOf(each.control));
  }
  form.window.width = form.window.width + 200 * twipsPerPixel;
  form.window.height = form.window.height + 100 * twipsPerPixel;
  const Place list = categoryListPlace(form);
  EXPECT_EQ(list.width, before[6].width + 200);
  EXPECT_EQ(list.height, before[6].height + 100);
  EXPECT_EQ(progressPanelPlace(form).top, before[4].top + 100);
  followSize(form);
  for (std::size_t row = 0; row < std::size(table); ++row) {
    const auto& [left, top, width, height] = table[row].more;
    EXPECT_EQ(placeOf(table[row].control),
              (Place{before[row].left + left, before[row].top + top, before[row].width + width,
                     before[row].height + height}))
        << "row " << row;
  }
}

TEST_F(LayoutTest, TheHeightOfTheLanguagePickerIsItsOwn) {
  form.pictrlang.height = 4321;
  form.window.width = form.window.width + 1000;
  followSize(form);
  EXPECT_EQ(form.pictrlang.height, 4321);
}

TEST_F(LayoutTest, ASmallerWindowThanTheLayoutsChangesNothing) {
  form.window.width = 1000;
  form.window.height = 1000;
  const Place before = placeOf(form.View2);
  followSize(form);
  EXPECT_EQ(placeOf(form.View2), before);
}

TEST_F(LayoutTest, TheWindowHasTheFormsSize) {
  EXPECT_EQ(form.window.width, windowWidth * twipsPerPixel);
  EXPECT_EQ(form.window.height, windowHeight * twipsPerPixel);
}

}  // namespace
}  // namespace zelvreg::desktop
