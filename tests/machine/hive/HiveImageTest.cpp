#include "machine/hive/HiveImage.h"

#include <gtest/gtest.h>

#include "machine/base/MachineError.h"
#include "machine/hive/RawHive.h"

namespace zelvreg::fixture {
namespace {

using namespace machine::hiveFormat;

std::string refusalOf(const std::string& file) {
  try {
    const machine::HiveImage image(std::as_bytes(std::span(file)));
    return "";
  } catch (const machine::MachineError& error) {
    return error.what();
  }
}

class HiveImageTest : public ::testing::Test {
 protected:
  RawHive hive;
};

TEST_F(HiveImageTest, AnyHeaderIsReadOrRefused) {
  const std::string whole = hive.file();
  EXPECT_EQ(refusalOf(whole), "");
  EXPECT_NE(refusalOf("").find("not a registry hive"), std::string::npos);
  EXPECT_NE(refusalOf(whole.substr(0, 512)).find("not a registry hive"), std::string::npos);
  EXPECT_NE(refusalOf(whole.substr(0, binsOffset)).find("more content"), std::string::npos);
  for (const std::uint32_t size : {0x80000000U, 0xFFFFFFFFU, 0x7FFFF000U}) {
    RawHive large = hive;
    large.bytes.put<std::uint32_t>(binsSizeOffset, size);
    EXPECT_NE(refusalOf(large.file()).find("more content"), std::string::npos) << size;
  }
  RawHive small = hive;
  small.bytes.put<std::uint32_t>(binsSizeOffset, 0);
  EXPECT_NE(refusalOf(small.file()).find("no root key"), std::string::npos);
  RawHive newer = hive;
  newer.bytes.put<std::uint32_t>(majorVersionOffset, 2);
  EXPECT_NE(refusalOf(newer.file()).find("not a registry hive"), std::string::npos);
  std::string unsound = whole;
  unsound[checksumOffset] ^= 1;
  EXPECT_NE(refusalOf(unsound).find("header is damaged"), std::string::npos);
}

TEST_F(HiveImageTest, AHeaderWhoseChecksumWouldBeZeroHasOne) {
  RawHive::sign(hive.bytes);
  // What makes the sum of all that stands before it zero.
  constexpr std::size_t unused = 0x100;
  hive.bytes.put<std::uint32_t>(unused, hive.bytes.get<std::uint32_t>(checksumOffset));
  machine::HiveBytes bytes(hive.file());
  ASSERT_EQ(bytes.get<std::uint32_t>(checksumOffset), 0U);
  bytes.put<std::uint32_t>(checksumOffset, 1);
  EXPECT_EQ(refusalOf(bytes.all()), "");
}

}  // namespace
}  // namespace zelvreg::fixture
