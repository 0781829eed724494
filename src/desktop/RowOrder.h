// Which rows of a list its window shows, and in which order. What the window shows are items, which
// count from 0; rows are those of the list and count from 1. The list keeps its own order.
#ifndef ZELVREG_DESKTOP_ROW_ORDER_H
#define ZELVREG_DESKTOP_ROW_ORDER_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "desktop/StepwiseSort.h"
#include "widgets/ListView.h"

namespace zelvreg::desktop {

struct SortedBy {
  std::size_t column = 0;
  bool isDescending = false;

  bool operator==(const SortedBy&) const = default;
};

class RowOrder {
 public:
  // Of items.
  [[nodiscard]] std::size_t count() const { return isOwn() ? rows : shown.size(); }
  // 0 for an item that does not exist.
  [[nodiscard]] std::size_t rowAt(std::size_t item) const;
  // None for a row that does not exist or is hidden.
  [[nodiscard]] std::optional<std::size_t> itemOf(std::size_t row) const;

  // Whether item n is row n + 1.
  [[nodiscard]] bool isOwn() const { return order.empty() && !hasHidden; }

  // Takes over the rows of the list and which of them are hidden. Rows that have come are at the
  // end until the next sorting. If rows have gone, the list's own order is shown until then.
  void follow(const ListView& list);

  // A click on a heading: ascending, at the second one descending, at the third one the list's own
  // order.
  void click(std::size_t column);
  [[nodiscard]] const std::optional<SortedBy>& sorting() const { return wanted; }
  // Whether there is still something to sort.
  [[nodiscard]] bool isUnsorted() const { return isStale; }
  // Does part of it (StepwiseSort::run). When all is done, the items are in the new order. Whether
  // it is.
  bool sort(std::size_t steps, const ListView& list,
            const std::function<std::string(std::size_t row)>& keyOf);

 private:
  void showOrder(const ListView& list);

  std::optional<SortedBy> wanted;
  bool isStale = false;
  std::optional<StepwiseSort> running;
  std::size_t rows = 0;
  std::size_t revision = 0;
  bool hasHidden = false;
  // All rows as they were last sorted; empty for the list's own order.
  std::vector<std::uint32_t> order;
  // Those of them that are not hidden, and the item of each row plus 1, 0 if it is hidden.
  std::vector<std::uint32_t> shown;
  std::vector<std::uint32_t> items;
};

}  // namespace zelvreg::desktop

#endif
