#include "desktop/StepwiseSort.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zelvreg::desktop {

StepwiseSort::StepwiseSort(std::size_t rows, bool descending)
    : count(rows), isDescending(descending), from(rows), to(rows), right(endOfRun(0)) {
  keys.reserve(rows);
  std::iota(from.begin(), from.end(), 1U);
}

bool StepwiseSort::run(std::size_t steps,
                       const std::function<std::string(std::size_t row)>& keyOf) {
  for (; steps > 0 && !isDone(); --steps) {
    if (keys.size() < count) {
      keys.push_back(keyOf(keys.size() + 1));
    } else {
      move();
    }
  }
  return isDone();
}

std::vector<std::uint32_t> StepwiseSort::takeOrder() { return std::move(from); }

bool StepwiseSort::isDone() const { return keys.size() == count && width >= count; }

std::size_t StepwiseSort::endOfRun(std::size_t first) const {
  return std::min(first + width, count);
}

bool StepwiseSort::isBefore(std::uint32_t one, std::uint32_t other) const {
  return isDescending ? keys[other - 1] < keys[one - 1] : keys[one - 1] < keys[other - 1];
}

void StepwiseSort::move() {
  const std::size_t middle = endOfRun(start);
  const std::size_t end = endOfRun(middle);
  const bool takesRight = left == middle || (right < end && isBefore(from[right], from[left]));
  to[left + right - middle] = from[takesRight ? right : left];
  ++(takesRight ? right : left);
  if (left < middle || right < end) {
    return;
  }
  start = end;
  if (start == count) {
    std::swap(from, to);
    start = 0;
    width *= 2;
  }
  left = start;
  right = endOfRun(start);
}

}  // namespace zelvreg::desktop
