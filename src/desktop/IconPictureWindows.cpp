#include <map>
#include <string>
#include <tuple>

#include "desktop/Desk.h"
#include "desktop/IconPicture.h"
#include "pictures/Icons.h"

namespace zelvreg::desktop {
namespace {

Rgb colourOf(IconColor color) {
  switch (color) {
    case IconColor::Accent:
      return rgb(0x3D649A);
    case IconColor::Waiting:
      return colours::disabled;
    case IconColor::Testing:
      return rgb(0xB45309);
    case IconColor::Finished:
      return rgb(0x15803D);
    case IconColor::Problem:
      return colours::problem;
    default:
      return colours::secondary;
  }
}

controls::Picture make(const IconRequest& request, const Icon& icon) {
  const auto shape = iconShape(request.key, MulDiv(request.length, request.resolution, 96));
  if (!shape) {
    return nullptr;
  }
  auto picture = std::make_shared<controls::Bitmap>(shape->size, shape->size);
  picture->pixels =
      painted(*shape, controls::toProperty(request.colour.value_or(colourOf(icon.color))));
  return picture;
}

}  // namespace

controls::Picture iconPicture(const IconRequest& request) {
  const Icon* icon = findIcon(request.key);
  if (icon == nullptr) {
    return nullptr;
  }
  using Key = std::tuple<std::string_view, int, int, std::uint32_t>;
  static std::map<Key, controls::Picture> made;
  const std::uint32_t colour =
      request.colour ? controls::toProperty(*request.colour) : controls::systemColour(0);
  controls::Picture& known = made[Key(icon->key, request.resolution, request.length, colour)];
  if (!known) {
    known = make(request, *icon);
  }
  return known;
}

}  // namespace zelvreg::desktop
