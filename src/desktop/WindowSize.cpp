#include <algorithm>

#include "desktop/Layout.h"
#include "form/Form42.h"

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

// A property tells its window even if it stays the same.
void change(Property<int, Change::Place>& length, int pixels) {
  if (length != pixels * twipsPerPixel) {
    length = pixels * twipsPerPixel;
  }
}

// An axis along which a control follows nothing may have a length from elsewhere.
template <class Entry>
void follow(Control& control, const Entry& entry, const Growth& growth) {
  const Place place = placeIn(entry.place, entry.anchors, growth);
  if (entry.anchors.across != Follows::No) {
    change(control.left, place.left);
    change(control.width, place.width);
  }
  if (entry.anchors.down != Follows::No) {
    change(control.top, place.top);
    change(control.height, place.height);
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

void followSize(Form42& form) {
  const Growth growth = growthOf(form);
  for (const FramePlace& each : framePlaces()) {
    follow(each.frame(form), each, growth);
  }
  for (const LabelPlace& each : labelPlaces()) {
    follow(each.label(form), each, growth);
  }
  for (const ButtonPlace& each : buttonPlaces()) {
    follow(each.button(form), each, growth);
  }
  for (const ControlPlace& each : controlPlaces()) {
    follow(each.control(form), each, growth);
  }
}

}  // namespace zelvreg::desktop
