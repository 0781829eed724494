// The counts by category, in place of the details of a row as long as no row is chosen.
#include <algorithm>

#include "desktop/MainWindow.h"
#include "form/Form42.h"
#include "shell/ResultsFilter.h"

namespace zelvreg::desktop {

void MainWindow::addBars() {
  for (Button& bar : form.CategoryBars) {
    auto peer = std::make_unique<BarPeer>(desk, parentOf(&form.Picture1), bar);
    bars.push_back(peer.get());
    others.push_back(std::move(peer));
  }
}

// It takes milliseconds for many rows.
void MainWindow::countCategories() {
  if (countedRevision != form.View2.revision()) {
    counts = countByCategory(form);
    countedRevision = form.View2.revision();
  }
}

// While a scan adds rows, nobody sees them.
void MainWindow::arrangeBars() {
  const bool canShow =
      form.View2.selectedCount() == 0 && !form.Gif89a1.visible && form.safeguards != asDescribed();
  if (canShow) {
    countCategories();
  }
  const std::size_t longest = canShow ? *std::ranges::max_element(counts) : 0;
  std::size_t place = 0;
  for (std::size_t index = 0; index < bars.size(); ++index) {
    Button& bar = form.CategoryBars[index];
    const bool isShown = canShow && counts[index] > 0;
    if (isShown) {
      put(bar, barPlace(form, place++));
      bars[index]->show({.name = form.View1.text(index + 1, 0),
                         .count = counts[index],
                         .longest = longest,
                         .isChosen = form.filterPass.category == index + 1});
    }
    bar.visible.renew(isShown);
  }
  const bool hasDetails = longest == 0;
  for (Control* detail :
       std::initializer_list<Control*>{&form.Image1, &form.Image3, &form.Label5, &form.Label6,
                                       &form.Label7, &form.EvidenceText, &form.Command28}) {
    detail->visible.renew(hasDetails);
  }
}

}  // namespace zelvreg::desktop
