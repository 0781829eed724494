#include "machine/hive/HiveReader.h"

#include <gtest/gtest.h>

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

TEST_F(HiveReaderTest, ASearchInALongListGoesByItsMarks) {
  RawHive large(std::size_t{64} * pageSize);
  Names names;
  for (int number = 0; number < 500; ++number) {
    names.push_back("key" + std::to_string(number));
  }
  for (const char* letters : {"lh", "lf", "li"}) {
    const std::size_t top = large.key("top", large.root());
    const auto keys = large.giveSubkeys(top, letters, names);
    // A damaged one is not looked at on the way.
    large.bytes.write(keys[3] + cellKind, "xx");
    OpenedHive opened(large);
    EXPECT_EQ(opened.search(top, u"KEY444") == Answer::Found, letters != std::string("li"));
    EXPECT_EQ(opened.search(top, u"no such key"), Answer::Unclear);
    large = RawHive(std::size_t{64} * pageSize);
  }
}

TEST_F(HiveReaderTest, AnEntryThatLeadsToAKeyOfAnotherMakesASearchUnclear) {
  const auto keys = hive.giveSubkeys(hive.root(), "lh", {"one", "two"});
  const auto below = hive.giveSubkeys(keys[0], "lh", {"inner", "beside"});
  hive.bytes.putLink(hive.bytes.follow(keys[0] + subkeyList) + listEntries + 8, keys[1]);
  EXPECT_EQ(OpenedHive(hive).search(keys[0], u"inner"), Answer::Unclear);
}

}  // namespace
}  // namespace zelvreg::fixture
