#include "machine/base/ChunkedList.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace zelvreg::machine {
namespace {

struct Mark {
  int number = 7;
};

template <typename List>
std::vector<std::uint32_t> entriesOf(const List& list) {
  std::vector<std::uint32_t> entries;
  list.forEach([&](std::uint32_t entry) { entries.push_back(entry); });
  return entries;
}

// A list of even numbers, so that odd ones can be put between them.
std::vector<std::uint32_t> evenNumbers(std::uint32_t count) {
  std::vector<std::uint32_t> numbers;
  for (std::uint32_t index = 0; index < count; ++index) {
    numbers.push_back(2 * index);
  }
  return numbers;
}

TEST(ChunkedList, ItIsOnePointer) { EXPECT_EQ(sizeof(ChunkedList<std::uint32_t>), sizeof(void*)); }

TEST(ChunkedList, OnePositionComesAfterTheOther) {
  for (const std::uint32_t count : {1U, 512U, 513U, 2000U}) {
    Arena arena;
    ChunkedList<std::uint32_t> list;
    list.assign(arena, evenNumbers(count));
    std::vector<std::uint32_t> found;
    ChunkedList<std::uint32_t>::Position position{0, 0};
    for (; list.at(position) != nullptr; position = list.after(position)) {
      found.push_back(*list.at(position));
    }
    EXPECT_EQ(found, evenNumbers(count));
  }
}

TEST(ChunkedList, AnEmptyOneHasNoEntries) {
  const ChunkedList<std::uint32_t> list;
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(list.size(), 0U);
  EXPECT_EQ(list.at(std::size_t{0}), nullptr);
  EXPECT_EQ(list.last(), nullptr);
}

TEST(ChunkedList, ItHoldsTheSameAsAVectorWhateverIsDoneToIt) {
  std::minstd_rand random(1);
  for (const std::size_t most : {3U, 100U, 600U, 5000U}) {
    Arena arena;
    ChunkedList<std::uint32_t> list;
    std::vector<std::uint32_t> expected;
    for (std::uint32_t step = 0; step < 3 * most; ++step) {
      const auto number = static_cast<std::uint32_t>(random() % (2 * most));
      const auto isBefore = [number](std::uint32_t entry) { return entry < number; };
      const auto place = std::ranges::partition_point(expected, isBefore);
      const auto position = list.partitionPoint(isBefore);
      const std::uint32_t* found = list.at(position);
      ASSERT_EQ(found == nullptr, place == expected.end());
      if (found != nullptr && *found == number) {
        list.erase(arena, position);
        expected.erase(place);
      } else {
        list.insert(arena, position, number);
        expected.insert(place, number);
      }
    }
    ASSERT_EQ(entriesOf(list), expected);
    ASSERT_EQ(list.size(), expected.size());
    for (std::size_t index = 0; index < expected.size(); ++index) {
      ASSERT_EQ(*list.at(index), expected[index]);
    }
    ASSERT_EQ(*list.last(), expected.back());
    while (!list.empty()) {
      list.erase(arena, {0, 0});
    }
    list.append(arena, 5);
    EXPECT_EQ(entriesOf(list), std::vector<std::uint32_t>{5});
  }
}

TEST(ChunkedList, FilledInOneGoItCanBeChangedLikeAnyOther) {
  for (const std::uint32_t count : {0U, 1U, 512U, 513U, 2000U}) {
    Arena arena;
    ChunkedList<std::uint32_t> list;
    std::vector<std::uint32_t> expected = evenNumbers(count);
    list.assign(arena, expected);
    ASSERT_EQ(entriesOf(list), expected);
    list.insert(arena, list.partitionPoint([](std::uint32_t entry) { return entry < 3; }), 3);
    expected.insert(std::ranges::partition_point(expected, [](auto entry) { return entry < 3; }),
                    3);
    list.append(arena, 9999);
    expected.push_back(9999);
    EXPECT_EQ(entriesOf(list), expected);
  }
}

TEST(ChunkedList, ALongOneHasACompanionForGood) {
  Arena arena;
  ChunkedList<std::uint32_t, 4, Mark> list;
  for (const std::uint32_t number : evenNumbers(4)) {
    list.append(arena, number);
    EXPECT_EQ(list.companion(), nullptr);
  }
  list.append(arena, 100);
  ASSERT_NE(list.companion(), nullptr);
  EXPECT_EQ(list.companion()->number, 7);
  EXPECT_EQ(entriesOf(list), (std::vector<std::uint32_t>{0, 2, 4, 6, 100}));
  list.companion()->number = 8;
  while (!list.empty()) {
    list.erase(arena, {0, 0});
  }
  ASSERT_NE(list.companion(), nullptr);
  EXPECT_EQ(list.companion()->number, 8);
}

TEST(ChunkedList, OneThatIsMovedLeavesNothingBehind) {
  Arena arena;
  ChunkedList<std::uint32_t> list;
  list.append(arena, 1);
  const ChunkedList<std::uint32_t> taken = std::exchange(list, {});
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(entriesOf(taken), std::vector<std::uint32_t>{1});
}

}  // namespace
}  // namespace zelvreg::machine
