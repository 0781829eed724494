#include "machine/hive/HiveBins.h"

#include <gtest/gtest.h>

#include "machine/TemporaryFolder.h"
#include "machine/hive/HiveContent.h"
#include "machine/hive/OpenedHive.h"

namespace zelvreg::fixture {
namespace {

using namespace machine::hiveFormat;
using Names = OpenedHive::Names;

// A hive whose root has one value, which begins in the first page of the bins and ends in the
// third.
class HiveBinsTest : public ::testing::Test {
 protected:
  HiveBinsTest() : value(hive.value("value", 3, std::string(2 * pageSize, 'v'))) {
    hive.giveValues(hive.root(), {value});
  }

  void putBin(std::size_t place, std::size_t size) {
    hive.bytes.write(place, binKind);
    hive.bytes.putLink(place + binPlace, place);
    hive.bytes.put<std::uint32_t>(place + binSize, static_cast<std::uint32_t>(size));
  }
  void divideAt(std::size_t place) {
    putBin(binsOffset, place - binsOffset);
    putBin(place, hive.bytes.all().size() - place);
  }

  [[nodiscard]] bool isReadByLibrary() const {
    folder.write("hive", hive.file());
    return readWithLibrary(folder.path() / "hive").has_value();
  }

  RawHive hive;
  std::size_t value;
  TemporaryFolder folder;
};

const Names asItIs{"value=8192"};
const Names damaged{"damage"};

TEST_F(HiveBinsTest, ACellThatReachesOverTheEndOfItsBinHoldsNothing) {
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), asItIs);
  EXPECT_TRUE(isReadByLibrary());
  const RawHive whole = hive;
  for (const std::size_t pages : {1U, 2U}) {
    hive = whole;
    divideAt(binsOffset + pages * pageSize);
    EXPECT_EQ(OpenedHive(hive).values(hive.root()), damaged) << pages;
    EXPECT_FALSE(isReadByLibrary());
  }
  hive = whole;
  divideAt(binsOffset + 3 * pageSize);
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), asItIs);
}

TEST_F(HiveBinsTest, ACellDoesNotBeginInTheHeaderOfABin) {
  const std::size_t second = binsOffset + 4 * pageSize;
  divideAt(second);
  constexpr std::size_t size = 0x18;
  hive.bytes.putCell(second + 8, size);
  hive.bytes.putLink(value + valueData, second + 8);
  hive.bytes.put<std::uint32_t>(value + valueSize, 5);
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), damaged);
  hive.bytes.putCell(second + binHeader, size);
  hive.bytes.putLink(value + valueData, second + binHeader);
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), (Names{"value=5"}));
}

TEST_F(HiveBinsTest, DataMayLookLikeABin) {
  putBin(binsOffset + pageSize, pageSize);
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), asItIs);
  EXPECT_TRUE(isReadByLibrary());
}

TEST_F(HiveBinsTest, BehindADamagedHeaderNothingIsTakenForData) {
  putBin(binsOffset + pageSize, pageSize);
  for (const std::uint32_t size : {0U, 8U}) {
    hive.bytes.put<std::uint32_t>(binsOffset + binSize, size);
    EXPECT_EQ(OpenedHive(hive).values(hive.root()), damaged) << size;
  }
  hive.bytes.put<std::uint32_t>(binsOffset + binPlace, 8);
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), damaged);
  // Its size alone is true.
  putBin(binsOffset, hive.bytes.all().size() - binsOffset);
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), asItIs);
  hive.bytes.put<std::uint32_t>(binsOffset + binPlace, 8);
  EXPECT_EQ(OpenedHive(hive).values(hive.root()), damaged);
}

TEST_F(HiveBinsTest, PagesAreNotLookedAtWithoutEnd) {
  const std::string file = hive.file();
  machine::HiveBins bins(std::as_bytes(std::span(file)));
  const auto isCrossed = [&bins] { return bins.areCrossedBy(binsOffset + 0x20, 3 * pageSize); };
  constexpr int asOftenAsAnHonestHiveAsks = 40;
  for (int time = 0; time < asOftenAsAnHonestHiveAsks; ++time) {
    ASSERT_FALSE(isCrossed());
  }
  constexpr int tooOften = 1000;
  for (int time = 0; time < tooOften; ++time) {
    static_cast<void>(isCrossed());
  }
  EXPECT_TRUE(isCrossed());
  EXPECT_FALSE(bins.areCrossedBy(binsOffset + 0x20, pageSize / 2));
}

}  // namespace
}  // namespace zelvreg::fixture
