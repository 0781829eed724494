#include "machine/registry/LastFound.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

#include "machine/registry/Registry.h"

namespace zelvreg::machine {
namespace {

constexpr std::size_t most = 1500;

std::u16string nameOf(std::size_t number) {
  const std::string text = std::to_string(most + number);
  return {text.begin(), text.end()};
}

TEST(LastFound, ItRemembersAPlaceForEachOfAFewKeys) {
  LastFound last;
  RegistryKey keys[2];
  last.of(keys[0]) = {3, 5};
  last.of(keys[1]) = {4, 6};
  EXPECT_EQ(last.of(keys[0]).slot, 5U);
  EXPECT_EQ(last.of(keys[1]).slot, 6U);
}

TEST(LastFound, ItIsForLongListsAlone) {
  Arena arena;
  KeyList list;
  for (int count = 0; count < 32; ++count) {
    list.append(arena, nullptr);
  }
  EXPECT_FALSE(LastFound::isWorthWhile(list));
  list.append(arena, nullptr);
  EXPECT_TRUE(LastFound::isWorthWhile(list));
}

// Keys are made and erased and sought in any order, and one after the other.
TEST(LastFound, WhatIsFoundIsRightHoweverTheListChanges) {
  Registry registry(64, "S-1-5-21-1-1-1-1001");
  RegistryKey& top = registry.makeChild(registry.machineRoot(), u"top");
  std::set<std::size_t> expected;
  std::minstd_rand random(1);
  for (int round = 0; round < 300; ++round) {
    const std::size_t first = random() % most;
    for (std::size_t number = first; number < std::min(first + 20, most); ++number) {
      RegistryKey* found = registry.child(top, nameOf(number));
      ASSERT_EQ(found != nullptr, expected.contains(number)) << number;
      ASSERT_TRUE(found == nullptr || found->name() == nameOf(number));
      if (found == nullptr && random() % 4 != 0) {
        registry.makeChild(top, nameOf(number));
        expected.insert(number);
      } else if (found != nullptr && random() % 8 == 0) {
        registry.erase(*found);
        expected.erase(number);
      }
    }
  }
  EXPECT_EQ(registry.children(top).size(), expected.size());
}

}  // namespace
}  // namespace zelvreg::machine
