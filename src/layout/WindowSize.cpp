#include <algorithm>

#include "form/Form42.h"
#include "layout/Layout.h"

namespace zelvreg::desktop {
namespace {

// Where a control begins and how long it is, along one axis.
struct Stretch {
  int start;
  int length;
};

Stretch stretchIn(const Stretch& stretch, Follows follows, int growth) {
  return {stretch.start + (follows == Follows::Moves ? growth : 0),
          stretch.length + (follows == Follows::Stretches ? growth : 0)};
}

// An axis along which a control follows nothing may have a length from elsewhere.
void follow(Control& control, const Place& place, const Anchors& anchors) {
  if (anchors.across != Follows::No) {
    control.left.renew(place.left * twipsPerPixel);
    control.width.renew(place.width * twipsPerPixel);
  }
  if (anchors.down != Follows::No) {
    control.top.renew(place.top * twipsPerPixel);
    control.height.renew(place.height * twipsPerPixel);
  }
}

// Calls `act` with each control, its place in a window of the form's size and its anchors.
template <class Act>
void forEachPlace(Form42& form, const Act& act) {
  const Growth growth = growthOf(form);
  const auto tell = [&](Control& control, const auto& entry) {
    act(control, placeIn(entry.place, entry.anchors, growth), entry.anchors);
  };
  for (const FramePlace& each : framePlaces()) {
    tell(each.frame(form), each);
  }
  for (const LabelPlace& each : labelPlaces()) {
    tell(each.label(form), each);
  }
  for (const ButtonPlace& each : buttonPlaces()) {
    tell(each.button(form), each);
  }
  for (const ControlPlace& each : controlPlaces()) {
    tell(each.control(form), each);
  }
}

}  // namespace

int fittingResolution(int resolution, int areaWidth, int areaHeight, int width, int height) {
  constexpr int normal = 96;
  const int fitting = std::min(areaWidth * normal / width, areaHeight * normal / height);
  return std::max(normal, std::min(resolution, fitting));
}

Place placeIn(const Place& place, const Anchors& anchors, const Growth& growth) {
  const Stretch across = stretchIn({place.left, place.width}, anchors.across, growth.width);
  const Stretch down = stretchIn({place.top, place.height}, anchors.down, growth.height);
  return {across.start, down.start, across.length, down.length};
}

Growth growthOf(const Form42& form) {
  return {std::max(0, form.window.width / twipsPerPixel - windowWidth),
          std::max(0, form.window.height / twipsPerPixel - windowHeight)};
}

void followSize(Form42& form) { forEachPlace(form, follow); }

Place placeFor(Form42& form, const Control& wanted) {
  Place found{};
  forEachPlace(form, [&](const Control& control, const Place& place, const Anchors&) {
    if (&control == &wanted) {
      found = place;
    }
  });
  return found;
}

}  // namespace zelvreg::desktop
