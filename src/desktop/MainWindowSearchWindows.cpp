// The place of the search's boxes and options, which follows from their captions.
#include <algorithm>
#include <array>
#include <span>

#include "desktop/MainWindow.h"
#include "form/Form42.h"

namespace zelvreg::desktop {
namespace {

// In pixels at 96 dpi.
constexpr int rowPitch = 19;
constexpr int besideBox = 4;

struct Box {
  Control* control;
  Place usual;
  int wanted;  // what its caption needs
};

bool fitsAsUsual(std::span<const Box> boxes) {
  return std::ranges::all_of(boxes, [](const Box& box) { return box.wanted <= box.usual.width; });
}

// As usual if all captions fit, else one after the other in one row, else in two columns, the
// second of which begins earlier in a row that has no room for it otherwise. How many rows that
// takes.
int placeInRows(std::span<const Box> boxes, int width) {
  if (fitsAsUsual(boxes)) {
    for (const Box& box : boxes) {
      put(*box.control, box.usual);
    }
    return boxes.back().usual.top > boxes.front().usual.top ? 2 : 1;
  }
  int inOneRow = -besideBox;
  int first = 0;
  for (std::size_t at = 0; at < boxes.size(); ++at) {
    inOneRow += boxes[at].wanted + besideBox;
    first = at % 2 == 0 ? std::max(first, boxes[at].wanted) : first;
  }
  const bool isOneRow = inOneRow <= width;
  int left = 0;
  for (std::size_t at = 0; at < boxes.size(); ++at) {
    const Box& box = boxes[at];
    const auto row = static_cast<int>(at / 2);
    Place place{left, box.usual.top, box.wanted, box.usual.height};
    if (!isOneRow) {
      const bool isFirst = at % 2 == 0;
      const std::size_t beside = isFirst ? at + 1 : at;
      const int second =
          std::min(first, width - (beside < boxes.size() ? boxes[beside].wanted : 0));
      place.left = isFirst ? 0 : second;
      place.width = isFirst ? second : width - second;
      place.top = boxes.front().usual.top + row * rowPitch;
    }
    put(*box.control, place);
    left += box.wanted + besideBox;
  }
  return isOneRow ? 1 : static_cast<int>(boxes.size() + 1) / 2;
}

}  // namespace

int MainWindow::captionWidth(const Control& control) {
  for (const auto& peer : others) {
    if (&peer->shownControl() == &control) {
      if (const auto* check = dynamic_cast<const CheckPeer*>(peer.get())) {
        return desk.fromPixels(check->naturalWidth()) + 1;
      }
    }
  }
  return 0;
}

// What the rows of the first group take more than usual moves all below it.
void MainWindow::arrangeSearch() {
  const auto box = [this](Control& control) {
    return Box{&control, placeFor(form, control), captionWidth(control)};
  };
  const std::array searched{box(form.ChKeys), box(form.ChValues), box(form.ChData)};
  const std::array ways{box(form.Option1), box(form.Option2), box(form.Option3), box(form.Option4)};
  Place roots = placeFor(form, form.Frame4);
  Place modes = placeFor(form, form.Frame5);
  Place find = placeFor(form, form.cmdFind);
  const int more = (placeInRows(searched, roots.width) - 1) * rowPitch;
  placeInRows(ways, modes.width);
  roots.height += more;
  modes.top += more;
  find.top += more;
  put(form.Frame4, roots);
  put(form.Frame5, modes);
  put(form.cmdFind, find);
  for (Button* step : {&form.chameleonButton11, &form.chameleonButton10}) {
    Place place = placeFor(form, *step);
    place.top = std::max(place.top, find.top + find.height + besideBox);
    put(*step, place);
  }
}

}  // namespace zelvreg::desktop
