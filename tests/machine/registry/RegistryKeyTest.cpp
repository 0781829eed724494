#include "machine/registry/RegistryKey.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace zelvreg::machine {
namespace {

TEST(RegistryKey, ItsDepthCountsTheKeysAboveIt) {
  RegistryKey root;
  RegistryKey child;
  child.parent = &root;
  RegistryKey grandchild;
  grandchild.parent = &child;
  EXPECT_EQ(depthOf(root), 0U);
  EXPECT_EQ(depthOf(child), 1U);
  EXPECT_EQ(depthOf(grandchild), 2U);
}

std::u16string nameOf(std::size_t number) {
  const std::string text = "Value" + std::to_string(number);
  return {text.begin(), text.end()};
}

// Values that are made and erased in any order, beside a plain list of their names.
TEST(ValueList, ItFindsWhatIsThereAndKeepsTheOrderHoweverLongItGetsAndWhateverIsErased) {
  for (const std::size_t most : {10U, 64U, 65U, 2000U}) {
    Arena arena;
    NamePool names;
    ValueList list;
    std::vector<std::u16string> expected;
    std::minstd_rand random(1);
    for (std::size_t step = 0; step < 4 * most; ++step) {
      const std::u16string name = nameOf(random() % most);
      const auto place = std::ranges::find(expected, name);
      ASSERT_EQ(list.find(name) == nullptr, place == expected.end());
      ASSERT_EQ(list.erase(arena, name), place != expected.end());
      if (place != expected.end()) {
        expected.erase(place);
      } else {
        list.append(arena, {.valueName = names.keep(arena, name)});
        expected.push_back(name);
      }
    }
    ASSERT_EQ(list.size(), expected.size());
    for (std::size_t index = 0; index < expected.size(); ++index) {
      ASSERT_EQ(list.at(index)->name(), expected[index]);
      ASSERT_EQ(list.find(expected[index]), list.at(index));
    }
  }
}

TEST(ValueList, OfSeveralWithOneNameTheFirstStays) {
  for (const std::size_t count : {3U, 200U}) {
    Arena arena;
    NamePool names;
    std::vector<RegistryValue> given;
    for (std::size_t number = 0; number < count; ++number) {
      given.push_back({.valueName = names.keep(arena, nameOf(number)), .type = REG_SZ});
    }
    given.push_back({.valueName = names.keep(arena, u"VALUE1"), .type = REG_BINARY});
    ValueList list;
    list.assign(arena, given);
    ASSERT_EQ(list.size(), count);
    EXPECT_EQ(list.find(u"value1")->type, DWORD{REG_SZ});
  }
}

}  // namespace
}  // namespace zelvreg::machine
