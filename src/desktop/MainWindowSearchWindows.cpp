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
constexpr int findTop = 502;
constexpr int pageButtonsTop = 546;
constexpr int findHeight = 28;
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
        return MulDiv(check->naturalWidth(), 96, desk.resolution()) + 1;
      }
    }
  }
  return 0;
}

// What the rows of the first group take more than usual moves all below it.
void MainWindow::arrangeSearch() {
  constexpr int width = 176;
  const std::array searched{
      Box{&form.ChKeys, {0, 30, 54, 18}, captionWidth(form.ChKeys)},
      Box{&form.ChValues, {57, 30, 62, 18}, captionWidth(form.ChValues)},
      Box{&form.ChData, {122, 30, 54, 18}, captionWidth(form.ChData)},
  };
  const std::array ways{
      Box{&form.Option1, {0, 41, 90, 18}, captionWidth(form.Option1)},
      Box{&form.Option2, {94, 41, 82, 18}, captionWidth(form.Option2)},
      Box{&form.Option3, {0, 62, 90, 18}, captionWidth(form.Option3)},
      Box{&form.Option4, {94, 62, 82, 18}, captionWidth(form.Option4)},
  };
  const int more = (placeInRows(searched, width) - 1) * rowPitch;
  placeInRows(ways, width);
  put(form.Frame4, {10, 364, width, 50 + more});
  put(form.Frame5, {10, 416 + more, width, 82});
  put(form.cmdFind, {10, findTop + more, width, findHeight});
  const int below = std::max(pageButtonsTop, findTop + more + findHeight + besideBox);
  put(form.chameleonButton11, {10, below, 86, 32});
  put(form.chameleonButton10, {102, below, 84, 32});
}

}  // namespace zelvreg::desktop
