#include "desktop/StepwiseSort.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zelvreg::desktop {
namespace {

using Keys = std::vector<std::string>;
using Order = std::vector<std::uint32_t>;

Order sorted(const Keys& keys, bool isDescending, std::size_t stepsAtOnce) {
  StepwiseSort sort(keys.size(), isDescending);
  while (!sort.run(stepsAtOnce, [&keys](std::size_t row) { return keys[row - 1]; })) {
  }
  return sort.takeOrder();
}

TEST(StepwiseSort, RowsWithTheSameKeyKeepTheirOrderInBothDirections) {
  const Keys keys{"b", "a", "c", "a", "b"};
  EXPECT_EQ(sorted(keys, false, 1), (Order{2, 4, 1, 5, 3}));
  EXPECT_EQ(sorted(keys, true, 1), (Order{3, 1, 5, 2, 4}));
}

TEST(StepwiseSort, NoRowsAndOneRowAreInOrder) {
  EXPECT_EQ(sorted({}, false, 1), Order());
  EXPECT_EQ(sorted({"a"}, false, 1), Order{1});
}

TEST(StepwiseSort, AnyNumberOfRowsInAnyStepsComesOutAsTheStandardSortsThem) {
  for (const std::size_t count : {2U, 3U, 7U, 8U, 9U, 100U, 257U}) {
    Keys keys;
    Order expected;
    for (std::size_t row = 1; row <= count; ++row) {
      keys.push_back(std::to_string(row * 7919 % 31));
      expected.push_back(static_cast<std::uint32_t>(row));
    }
    std::ranges::stable_sort(expected, [&keys](std::uint32_t one, std::uint32_t other) {
      return keys[one - 1] < keys[other - 1];
    });
    for (const std::size_t steps : {1U, 13U, 100000U}) {
      EXPECT_EQ(sorted(keys, false, steps), expected) << count << " rows, " << steps << " steps";
    }
  }
}

TEST(StepwiseSort, ItDoesNoMoreStepsThanItIsGiven) {
  std::size_t asked = 0;
  StepwiseSort sort(100, false);
  EXPECT_FALSE(sort.run(10, [&asked](std::size_t /*row*/) {
    ++asked;
    return std::string();
  }));
  EXPECT_EQ(asked, 10U);
}

}  // namespace
}  // namespace zelvreg::desktop
