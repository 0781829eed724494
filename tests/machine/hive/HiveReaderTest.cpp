#include "machine/hive/HiveReader.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "machine/hive/OpenedHive.h"

namespace zelvreg::fixture {
namespace {

using namespace machine::hiveFormat;
using Answer = machine::FoundSubkey::Answer;
using Names = OpenedHive::Names;

class HiveReaderTest : public ::testing::Test {
 protected:
  void setCount(std::size_t key, std::uint32_t count) {
    hive.bytes.put<std::uint32_t>(key + subkeyCount, count);
  }

  RawHive hive;
};

TEST_F(HiveReaderTest, ListsOfEveryKindAreReadInTheirOrder) {
  for (const char* letters : {"lh", "lf", "li"}) {
    const std::size_t key = hive.key("top", hive.root());
    hive.giveSubkeys(key, letters, {"b", "a", "c"});
    EXPECT_EQ(OpenedHive(hive).subkeys(key), (Names{"b", "a", "c"})) << letters;
  }
}

TEST_F(HiveReaderTest, AListOfListsIsReadAsOne) {
  const std::size_t first = hive.key("first", hive.root());
  const std::size_t second = hive.key("second", hive.root());
  hive.giveList(hive.root(), hive.list("ri", {hive.list("lh", {first}), hive.list("li", {second})}),
                2);
  OpenedHive opened(hive);
  EXPECT_EQ(opened.search(hive.root(), u"SECOND"), Answer::Found);
  EXPECT_EQ(opened.found.subkey.node, second);
  EXPECT_EQ(OpenedHive(hive).subkeys(hive.root()), (Names{"first", "second"}));
}

TEST_F(HiveReaderTest, AListOfListsInAnotherIsPassedOver) {
  const std::size_t first = hive.key("first", hive.root());
  const std::size_t second = hive.key("second", hive.root());
  const std::size_t inner = hive.list("ri", {hive.list("lh", {second})});
  hive.giveList(hive.root(), hive.list("ri", {hive.list("lh", {first}), inner}), 2);
  OpenedHive opened(hive);
  EXPECT_EQ(opened.search(hive.root(), u"first"), Answer::Unclear);
  EXPECT_EQ(opened.subkeys(hive.root()), (Names{"first", "damage"}));
}

TEST_F(HiveReaderTest, AListOfListsThatHoldsItselfEnds) {
  const std::size_t list = hive.list("ri", {hive.root(), hive.root()});
  hive.bytes.putLink(list + listEntries, list);
  hive.giveList(hive.root(), list, 2);
  EXPECT_EQ(OpenedHive(hive).subkeys(hive.root()), (Names{"damage"}));
}

TEST_F(HiveReaderTest, AListThatClaimsMoreThanItsCellHoldsGivesWhatItHas) {
  const auto keys = hive.giveSubkeys(hive.root(), "li", {"one", "two"});
  const std::size_t list = hive.bytes.follow(hive.root() + subkeyList);
  hive.bytes.put<std::uint16_t>(list + listCount, 0xFFFF);
  setCount(hive.root(), 0xFFFF);
  OpenedHive opened(hive);
  EXPECT_EQ(opened.search(hive.root(), u"one"), Answer::Unclear);
  EXPECT_EQ(opened.subkeys(hive.root()), (Names{"one", "two", "damage"}));
}

TEST_F(HiveReaderTest, ACountOfSubkeysThatIsNotTrueIsDamage) {
  hive.giveSubkeys(hive.root(), "lh", {"one", "two"});
  setCount(hive.root(), 3);
  OpenedHive opened(hive);
  EXPECT_EQ(opened.search(hive.root(), u"one"), Answer::Unclear);
  EXPECT_EQ(opened.subkeys(hive.root()), (Names{"one", "two", "damage"}));
}

TEST_F(HiveReaderTest, AnEntryThatLeadsNowhereIsPassedOver) {
  hive.giveSubkeys(hive.root(), "lh", {"one", "two", "three"});
  const std::size_t entry = hive.bytes.follow(hive.root() + subkeyList) + listEntries + 8;
  for (const std::uint32_t link : {0xFFFFFFFFU, 0x7FFFFFF8U, 0U, 0x21U}) {
    hive.bytes.put<std::uint32_t>(entry, link);
    OpenedHive opened(hive);
    EXPECT_EQ(opened.search(hive.root(), u"one"), Answer::Unclear);
    EXPECT_EQ(opened.subkeys(hive.root()), (Names{"one", "three", "damage"})) << link;
  }
}

TEST_F(HiveReaderTest, AKeyIsGivenOnce) {
  const auto keys = hive.giveSubkeys(hive.root(), "lh", {"one", "two"});
  hive.giveList(keys[0], hive.list("lh", {hive.root(), keys[1], keys[0]}), 3);
  OpenedHive opened(hive);
  EXPECT_EQ(opened.subkeys(hive.root()), (Names{"one", "two"}));
  EXPECT_EQ(opened.subkeys(keys[0]), (Names{"damage"}));
}

TEST_F(HiveReaderTest, KeysThatShareOneListDoNotMultiplyIt) {
  RawHive large(std::size_t{256} * pageSize);
  Names names;
  for (int number = 0; number < 2000; ++number) {
    names.push_back("key" + std::to_string(number));
  }
  const auto keys = large.giveSubkeys(large.root(), "li", names);
  const std::size_t list = large.bytes.follow(large.root() + subkeyList);
  for (const std::size_t key : keys) {
    large.giveList(key, list, keys.size());
  }
  const std::size_t sound = large.key("sound", large.root());
  large.giveSubkeys(sound, "li", {"below"});
  OpenedHive opened(large);
  EXPECT_EQ(opened.subkeys(large.root()), names);
  for (const std::size_t key : keys) {
    EXPECT_EQ(opened.subkeys(key), (Names{"damage"}));
  }
  // All entries that a hive of this size can have are used up: even sound keys are not read then.
  EXPECT_EQ(OpenedHive(large).subkeys(sound), (Names{"below"}));
  EXPECT_EQ(opened.subkeys(sound), (Names{"damage"}));
}

TEST_F(HiveReaderTest, ACellThatIsFreeOrTooSmallOrBeyondTheEndHoldsNoKey) {
  const auto keys = hive.giveSubkeys(hive.root(), "lh", {"one", "another"});
  const auto original = hive.bytes.get<std::int32_t>(keys[1]);
  for (const std::int32_t size : {-original, -0x50, -8, -0x7FFFFFF0, 0}) {
    hive.bytes.put<std::int32_t>(keys[1], size);
    EXPECT_EQ(OpenedHive(hive).subkeys(hive.root()), (Names{"one", "damage"})) << size;
  }
}

TEST_F(HiveReaderTest, BehindTheLastBinThereIsNoKey) {
  const auto keys = hive.giveSubkeys(hive.root(), "lh", {"one", "another"});
  const std::size_t page = binsOffset + 8 * pageSize;
  const std::string moved = hive.bytes.all().substr(keys[1], 0x80);
  hive.bytes.write(page, moved);
  const std::size_t list = hive.bytes.follow(hive.root() + subkeyList);
  hive.bytes.putLink(list + listEntries + 8, page);
  EXPECT_EQ(OpenedHive(hive).subkeys(hive.root()), (Names{"one", "another"}));
  hive.bytes.put<std::uint32_t>(binsSizeOffset, 8 * pageSize);
  EXPECT_EQ(OpenedHive(hive).subkeys(hive.root()), (Names{"one", "damage"}));
}

TEST_F(HiveReaderTest, AKeyWithoutSubkeysHasNoneOfAnyName) {
  OpenedHive opened(hive);
  EXPECT_EQ(opened.search(hive.root(), u"one"), Answer::Absent);
  EXPECT_EQ(opened.search(8, u"one"), Answer::Unclear);
}

TEST_F(HiveReaderTest, NamesAreLatinOrWideAndMayHoldAnything) {
  const std::size_t latin = hive.key("\xE4\\b", hive.root());
  const std::size_t wide = hive.wideKey(std::string("a\0\0\0b\0\x3D\xD8", 8), hive.root());
  const std::size_t odd = hive.wideKey(std::string("a\0b", 3), hive.root());
  const std::size_t none = hive.key("", hive.root());
  hive.giveList(hive.root(), hive.list("li", {latin, wide, odd, none}), 4);
  OpenedHive opened(hive);
  std::vector<std::u16string> names;
  EXPECT_FALSE(opened.reader.subkeys(
      static_cast<std::uint32_t>(hive.root()), {},
      [&](const machine::HiveSubkey& subkey) { names.push_back(subkey.name.text()); }));
  EXPECT_EQ(names, (std::vector<std::u16string>{u"\xE4\\b", {u'a', u'\0', u'b', 0xD83D}, u""}));
}

TEST_F(HiveReaderTest, ASearchIgnoresCaseAndLeavesOthersToAWalk) {
  const auto keys = hive.giveSubkeys(hive.root(), "lf", {"abcd1", "ABCD2", "\xE4rger"});
  OpenedHive opened(hive);
  EXPECT_EQ(opened.search(hive.root(), u"\xC4RGER"), Answer::Found);
  EXPECT_EQ(opened.found.subkey.node, keys[2]);
  EXPECT_EQ(opened.search(hive.root(), u"abcd"), Answer::Absent);
  EXPECT_EQ(opened.search(hive.root(), u"abcd2"), Answer::Found);
  // It was given before, and not as one that is known.
  EXPECT_EQ(opened.search(hive.root(), u"abcd2"), Answer::Unclear);
  const std::vector<std::uint32_t> known{static_cast<std::uint32_t>(keys[1]),
                                         static_cast<std::uint32_t>(keys[2])};
  EXPECT_EQ(opened.subkeys(hive.root(), known), (Names{"abcd1"}));
}

TEST_F(HiveReaderTest, ASearchDoesNotTrustTheMarksOfAShortList) {
  const auto keys = hive.giveSubkeys(hive.root(), "lh", {"one", "two"});
  const std::size_t list = hive.bytes.follow(hive.root() + subkeyList);
  hive.bytes.put<std::uint32_t>(list + listEntries + 4, 0);
  EXPECT_EQ(OpenedHive(hive).search(hive.root(), u"one"), Answer::Found);
}

// Of the keys in a list of many one is sought, with its marks and its place as they are left.
class LongListTest : public ::testing::Test {
 protected:
  static constexpr std::size_t count = 500;

  void make(const char* letters) {
    hive = RawHive(std::size_t{64} * pageSize);
    Names names;
    for (std::size_t number = 0; number < count; ++number) {
      names.push_back("key" + std::to_string(1000 + number));
    }
    keys = hive.giveSubkeys(hive.root(), letters, names);
    list = hive.bytes.follow(hive.root() + subkeyList);
  }
  // Where the entry of this index is; with marks beside them entries have 8 bytes.
  [[nodiscard]] std::size_t entry(std::size_t index) const {
    return list + listEntries + 8 * index;
  }
  void swapEntries(std::size_t first, std::size_t second) {
    const std::string bytes(hive.bytes.text(entry(first), 8));
    hive.bytes.write(entry(first), std::string(hive.bytes.text(entry(second), 8)));
    hive.bytes.write(entry(second), bytes);
  }
  // What a search for a key says; if it was found, it is the right one.
  Answer search(std::size_t index) {
    const std::string name = "KEY" + std::to_string(1000 + index);
    OpenedHive opened(hive);
    const Answer answer = opened.search(hive.root(), std::u16string(name.begin(), name.end()));
    EXPECT_TRUE(answer != Answer::Found || opened.found.subkey.node == keys[index]);
    return answer;
  }

  RawHive hive;
  RawHive::Places keys;
  std::size_t list = 0;
};

TEST_F(LongListTest, IsSearchedOfWhateverKindItIs) {
  for (const char* letters : {"lh", "lf", "li"}) {
    make(letters);
    for (const std::size_t index : {std::size_t{0}, std::size_t{1}, std::size_t{250}, count - 1}) {
      EXPECT_EQ(search(index), Answer::Found) << letters << index;
    }
    EXPECT_EQ(search(count), Answer::Absent) << letters;
  }
}

TEST_F(LongListTest, OneWithoutMarksMayBeInSeveralParts) {
  make("li");
  const auto middle = keys.begin() + 200;
  hive.giveList(hive.root(),
                hive.list("ri", {hive.list("li", {keys.begin(), middle}), hive.list("li", {}),
                                 hive.list("li", {middle, keys.end()})}),
                count);
  for (const std::size_t index : {std::size_t{0}, std::size_t{199}, std::size_t{200}, count - 1}) {
    EXPECT_EQ(search(index), Answer::Found) << index;
  }
  EXPECT_EQ(search(count), Answer::Absent);
}

TEST_F(LongListTest, AKeyIsFoundByItsMarkOrByItsPlace) {
  make("lh");
  hive.bytes.put<std::uint32_t>(entry(100) + 4, 1);
  swapEntries(300, 400);
  EXPECT_EQ(search(100), Answer::Found);
  EXPECT_EQ(search(300), Answer::Found);
  // Windows does not find what has neither.
  hive.bytes.put<std::uint32_t>(entry(300) + 4, 1);
  EXPECT_EQ(search(400), Answer::Absent);
}

TEST_F(LongListTest, ADamagedKeyIsInTheWayOnlyWhereItIsLookedAt) {
  make("lh");
  hive.bytes.write(keys[250] + cellKind, "xx");
  EXPECT_EQ(search(100), Answer::Found);
  EXPECT_EQ(search(count), Answer::Unclear);
}

TEST_F(HiveReaderTest, AnEntryThatLeadsToAKeyOfAnotherMakesASearchUnclear) {
  const auto keys = hive.giveSubkeys(hive.root(), "lh", {"one", "two"});
  const auto below = hive.giveSubkeys(keys[0], "lh", {"inner", "beside"});
  hive.bytes.putLink(hive.bytes.follow(keys[0] + subkeyList) + listEntries + 8, keys[1]);
  EXPECT_EQ(OpenedHive(hive).search(keys[0], u"inner"), Answer::Unclear);
}

}  // namespace
}  // namespace zelvreg::fixture
