#include "desktop/RowOrder.h"

namespace zelvreg::desktop {

std::size_t RowOrder::rowAt(std::size_t item) const {
  if (item >= count()) {
    return 0;
  }
  return isOwn() ? item + 1 : shown[item];
}

std::optional<std::size_t> RowOrder::itemOf(std::size_t row) const {
  if (row < 1 || row > rows || (!isOwn() && items[row - 1] == 0)) {
    return std::nullopt;
  }
  return isOwn() ? row - 1 : items[row - 1] - 1;
}

void RowOrder::follow(const ListView& list) {
  const std::size_t changes = list.revision() - revision;
  if (changes > 0) {
    const bool haveOnlyCome = list.count() - rows == changes;
    if (!haveOnlyCome) {
      order.clear();
    }
    for (std::size_t row = order.size() + 1; !order.empty() && row <= list.count(); ++row) {
      order.push_back(static_cast<std::uint32_t>(row));
    }
    running.reset();
    isStale = wanted.has_value();
    rows = list.count();
    revision = list.revision();
  }
  showOrder(list);
}

void RowOrder::showOrder(const ListView& list) {
  hasHidden = list.hiddenCount() > 0;
  shown.clear();
  items.clear();
  if (isOwn()) {
    return;
  }
  items.resize(rows);
  for (std::size_t place = 0; place < rows; ++place) {
    const std::size_t row = order.empty() ? place + 1 : order[place];
    if (!list.isHidden(row)) {
      shown.push_back(static_cast<std::uint32_t>(row));
      items[row - 1] = static_cast<std::uint32_t>(shown.size());
    }
  }
}

void RowOrder::click(std::size_t column) {
  if (!wanted || wanted->column != column) {
    wanted = SortedBy{column, false};
  } else if (!wanted->isDescending) {
    wanted->isDescending = true;
  } else {
    wanted.reset();
  }
  running.reset();
  isStale = true;
}

bool RowOrder::sort(std::size_t steps, const ListView& list,
                    const std::function<std::string(std::size_t row)>& keyOf) {
  if (!isStale) {
    return true;
  }
  if (wanted) {
    if (!running) {
      running.emplace(rows, wanted->isDescending);
    }
    if (!running->run(steps, keyOf)) {
      return false;
    }
    order = running->takeOrder();
    running.reset();
  } else {
    order.clear();
  }
  isStale = false;
  showOrder(list);
  return true;
}

}  // namespace zelvreg::desktop
