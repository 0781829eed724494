// Sorts the rows of a list in small steps, so that nobody waits for it.
#ifndef ZELVREG_DESKTOP_STEPWISE_SORT_H
#define ZELVREG_DESKTOP_STEPWISE_SORT_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zelvreg::desktop {

// A merge sort that can be interrupted. Rows count from 1; those with the same key keep their
// order, in both directions.
class StepwiseSort {
 public:
  StepwiseSort(std::size_t rows, bool descending);

  // Does that many steps, or fewer if it is done before: whether it is. A step takes the key of one
  // row, or moves one row.
  bool run(std::size_t steps, const std::function<std::string(std::size_t row)>& keyOf);
  // Once it is done. It is of no use afterwards.
  std::vector<std::uint32_t> takeOrder();

 private:
  void move();
  [[nodiscard]] bool isBefore(std::uint32_t one, std::uint32_t other) const;
  [[nodiscard]] bool isDone() const;
  [[nodiscard]] std::size_t endOfRun(std::size_t first) const;

  std::size_t count;
  bool isDescending;
  std::vector<std::string> keys;
  // Runs of `width` rows are in order in `from`; two of them at a time are merged into `to`.
  std::vector<std::uint32_t> from;
  std::vector<std::uint32_t> to;
  std::size_t width = 1;
  std::size_t start = 0;
  std::size_t left = 0;
  std::size_t right = 0;
};

}  // namespace zelvreg::desktop

#endif
