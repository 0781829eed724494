// Values of a hive, as the reader gives them.
#include <gtest/gtest.h>

#include "machine/hive/OpenedHive.h"

namespace zelvreg::fixture {
namespace {

using namespace machine::hiveFormat;
using Names = OpenedHive::Names;

class HiveValuesTest : public ::testing::Test {
 protected:
  RawHive hive;
};

TEST_F(HiveValuesTest, ValuesThatCannotBeReadArePassedOver) {
  const std::size_t good = hive.value("good", 1, "text of it");
  const std::size_t outside = hive.value("outside", 1, "text of it");
  hive.bytes.put<std::uint32_t>(outside + valueData, 0x7FFFFFF8);
  const std::size_t tooLong = hive.value("too long", 1, "text of it");
  hive.bytes.put<std::uint32_t>(tooLong + valueSize, 0x7FFFFFFF);
  const std::size_t inLink = hive.value("in link", 4, "abcd");
  hive.bytes.put<std::uint32_t>(inLink + valueSize, sizeOfDataInLink | 5);
  const std::size_t longName = hive.value("long name", 4, "abcd");
  hive.bytes.put<std::uint16_t>(longName + valueNameLength, 0xFFFF);
  const std::size_t other = hive.value("other", 4, "abcd");
  hive.bytes.write(other + cellKind, "nk");
  const std::size_t odd = hive.value("odd", 4, "abcd");
  hive.bytes.put<std::uint16_t>(odd + valueFlags, 0);
  hive.giveValues(hive.root(), {outside, tooLong, inLink, good, longName, other, odd});
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), (Names{"good=10", "damage"}));
}

TEST_F(HiveValuesTest, ACountOfValuesThatIsNotTrueIsDamage) {
  const std::size_t value = hive.value("good", 1, "text of it");
  hive.giveValues(hive.root(), {value});
  for (const std::uint32_t count : {0x80000000U, 0xFFFFFFFFU, 0x40000000U}) {
    hive.bytes.put<std::uint32_t>(hive.root() + valueCount, count);
    EXPECT_EQ(OpenedHive(hive).values(hive.root()), (Names{"good=10", "damage"})) << count;
  }
}

TEST_F(HiveValuesTest, ALargeValueIsPutTogetherOrPassedOver) {
  const std::string data = std::string(partSize, 'a') + std::string(partSize, 'b') + "the end";
  const std::size_t value = hive.largeValue("large", 3, data);
  hive.giveValues(hive.root(), {value});
  std::string read;
  OpenedHive opened(hive);
  opened.reader.values(static_cast<std::uint32_t>(hive.root()), [&](const auto& found) {
    EXPECT_FALSE(found.isInHive);
    read.assign(reinterpret_cast<const char*>(found.bytes.data()), found.bytes.size());
  });
  EXPECT_EQ(read, data);
  const std::size_t head = hive.bytes.follow(value + valueData);
  const std::size_t list = hive.bytes.follow(head + listEntries);
  const RawHive whole = hive;
  hive.bytes.put<std::uint16_t>(head + listCount, 2);
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), (Names{"damage"}));
  hive = whole;
  hive.bytes.put<std::uint32_t>(list + cellHeader + 4, 0x7FFFFFF8);
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), (Names{"damage"}));
  hive = whole;
  // A cell that ends before its link to the list.
  hive.bytes.put<std::int32_t>(head, -8);
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), (Names{"damage"}));
  hive = whole;
  hive.bytes.put<std::uint32_t>(value + valueSize, 0x7FFFFFFF);
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), (Names{"damage"}));
}

TEST_F(HiveValuesTest, PartsThatAreOneCellDoNotMultiplyIt) {
  const std::size_t value = hive.largeValue("large", 3, std::string(2 * partSize, 'a'));
  const std::size_t head = hive.bytes.follow(value + valueData);
  const std::size_t first = hive.bytes.follow(hive.bytes.follow(head + listEntries) + cellHeader);
  const std::size_t list = hive.cell(4 * 1000);
  for (std::size_t part = 0; part < 1000; ++part) {
    hive.bytes.putLink(list + cellHeader + 4 * part, first);
  }
  hive.bytes.putLink(head + listEntries, list);
  hive.bytes.put<std::uint16_t>(head + listCount, 1000);
  hive.bytes.put<std::uint32_t>(value + valueSize, 1000 * partSize);
  hive.giveValues(hive.root(), {value});
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), (Names{"damage"}));
}

TEST_F(HiveValuesTest, PartsThatAreDamagedAreNotPutTogetherWithoutEnd) {
  const std::size_t bad = hive.largeValue("bad", 3, std::string(partSize + 1, 'a'));
  const std::size_t parts = hive.bytes.follow(hive.bytes.follow(bad + valueData) + listEntries);
  hive.bytes.putLink(parts + cellHeader + 4, hive.root() + 8);
  const std::size_t good = hive.largeValue("good", 3, std::string(partSize + 1, 'b'));
  hive.giveValues(hive.root(), {bad, bad, bad, good});
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), (Names{"good=16345", "damage"}));
  // As many parts as two hives of this size have room for.
  hive.giveValues(hive.root(), {bad, bad, bad, bad, good});
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), (Names{"damage"}));
}

TEST_F(HiveValuesTest, ValuesThatShareTheirDataDoNotMultiplyThem) {
  const std::size_t first = hive.value("a", 3, std::string(8000, 'x'));
  RawHive::Places values{first};
  for (int number = 0; number < 20; ++number) {
    values.push_back(hive.value("b", 3, "xxxxx"));
    hive.bytes.put<std::uint32_t>(values.back() + valueSize, 8000);
    hive.bytes.putLink(values.back() + valueData, hive.bytes.follow(first + valueData));
  }
  hive.giveValues(hive.root(), values);
  // A hive of so many bytes holds no more than 8 of them.
  EXPECT_EQ(OpenedHive(hive).values(hive.root()).size(), 8U + 1);
}

}  // namespace
}  // namespace zelvreg::fixture
