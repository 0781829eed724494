#include <map>
#include <tuple>

#include "desktop/IconPicture.h"
#include "pictures/Icons.h"

namespace zelvreg::desktop {
namespace {

controls::Picture make(const IconRequest& request) {
  const auto shape = iconShape(request.key, request.pixels);
  if (!shape) {
    return nullptr;
  }
  auto picture = std::make_shared<controls::Bitmap>(shape->size, shape->size);
  picture->pixels = painted(*shape, controls::toProperty(request.color));
  return picture;
}

}  // namespace

controls::Picture iconPicture(const IconRequest& request) {
  const Icon* icon = findIcon(request.key);
  if (icon == nullptr) {
    return nullptr;
  }
  using Key = std::tuple<std::string_view, int, std::uint32_t>;
  static std::map<Key, controls::Picture> made;
  const Key key(icon->key, request.pixels, controls::toProperty(request.color));
  controls::Picture& known = made[key];
  if (!known) {
    known = make(request);
  }
  return known;
}

Tone toneOfIcon(std::string_view key) {
  const Icon* icon = findIcon(key);
  if (icon == nullptr) {
    return Tone::Secondary;
  }
  switch (icon->color) {
    case IconColor::Accent:
      return Tone::Mark;
    case IconColor::Waiting:
      return Tone::Waiting;
    case IconColor::Testing:
      return Tone::Testing;
    case IconColor::Finished:
      return Tone::Finished;
    case IconColor::Problem:
      return Tone::Problem;
    default:
      return Tone::Secondary;
  }
}

}  // namespace zelvreg::desktop
