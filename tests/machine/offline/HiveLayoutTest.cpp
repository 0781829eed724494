// How a written hive is laid out in its bytes, where Windows is stricter than libhivex.
#include <gtest/gtest.h>

#include <cstdlib>

#include "machine/OfflineDiskFixture.h"

namespace zelvreg::fixture {
namespace {

using namespace std::string_literals;

constexpr const char* vendor = R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)";

class HiveLayoutTest : public OfflineDiskTest {
 protected:
  void SetUp() override { hive(software).text("Vendor", "x", "old"); }

  // Gives the hive another version; that of Windows XP and later is 5.
  void setVersion(char version) {
    std::string bytes = disk.read(software);
    constexpr std::size_t place = 0x18;
    constexpr std::size_t checksum = 0x1FC;
    bytes[checksum] = static_cast<char>(bytes[checksum] ^ bytes[place] ^ version);
    bytes[place] = version;
    disk.write(software, bytes);
  }

  template <typename Number = std::uint32_t>
  static Number numberAt(const std::string& bytes, std::size_t offset) {
    Number number{};
    std::memcpy(&number, bytes.data() + offset, sizeof number);
    return number;
  }
  static std::size_t follow(const std::string& bytes, std::size_t offset) {
    return numberAt(bytes, offset) + 0x1000;
  }

  // The node of a key below the root of the hive.
  std::size_t nodeOf(const std::string& name) {
    hive_h* opened = hivex_open((disk.path() / software).c_str(), 0);
    const hive_node_h node = hivex_node_get_child(opened, hivex_root(opened), name.c_str());
    hivex_close(opened);
    return node;
  }

  // The entries of a key's list of subkeys, each with its name's bytes and what stands beside it.
  struct List {
    std::string kind;
    std::vector<std::pair<std::string, std::uint32_t>> entries;
  };
  List subkeysOf(const std::string& name) {
    const std::string bytes = disk.read(software);
    const std::size_t list = follow(bytes, nodeOf(name) + 0x20);
    List found{bytes.substr(list + 4, 2), {}};
    for (std::size_t index = 0; index < numberAt<std::uint16_t>(bytes, list + 6); ++index) {
      const std::size_t key = follow(bytes, list + 8 + 8 * index);
      found.entries.emplace_back(
          bytes.substr(key + 0x50, numberAt<std::uint16_t>(bytes, key + 0x4C)),
          numberAt(bytes, list + 12 + 8 * index));
    }
    return found;
  }

  void addSubkeys() {
    open();
    for (const std::u16string_view name :
         {u"b_b", u"bAb", u"\u00C5ngstr\u00F6m", u"\u00E4rger", u"\u0416", u"\u0451"}) {
      registry().makeChild(key(vendor), name);
    }
    computer->save();
  }
};

// 37 times what came before, and the upper-case letter.
std::uint32_t hashOf(std::u16string_view upperCaseName) {
  std::uint32_t hash = 0;
  for (const char16_t letter : upperCaseName) {
    hash = hash * 37 + letter;
  }
  return hash;
}

TEST_F(HiveLayoutTest, SubkeysAreSortedAndHashedByUpperCaseUnicode) {
  setVersion(5);
  addSubkeys();
  const List list = subkeysOf("Vendor");
  EXPECT_EQ(list.kind, "lh");
  const std::vector<std::pair<std::string, std::uint32_t>> expected{
      {"bAb", hashOf(u"BAB")},
      {"b_b", hashOf(u"B_B")},
      {"\xE4rger", hashOf(u"\u00C4RGER")},
      {"\xC5ngstr\xF6m", hashOf(u"\u00C5NGSTR\u00D6M")},
      {"\x51\x04", hashOf(u"\u0401")},
      {"\x16\x04", hashOf(u"\u0416")}};
  EXPECT_EQ(list.entries, expected);
}

TEST_F(HiveLayoutTest, AHiveOfAnOldVersionHasTheFirstLettersBesideEachKey) {
  setVersion(3);
  addSubkeys();
  const List list = subkeysOf("Vendor");
  EXPECT_EQ(list.kind, "lf");
  ASSERT_EQ(list.entries.size(), 6U);
  EXPECT_EQ(list.entries[1], std::pair("b_b"s, 0x00625F62U));
  EXPECT_EQ(list.entries[2], std::pair("\xE4rger"s, 0x656772E4U));
  EXPECT_EQ(list.entries[5].second, 0U);
}

// Whether all bins, from the first to the end, are filled with cells without a gap.
bool isTiled(const std::string& bytes) {
  const auto sizeAt = [&bytes](std::size_t offset) {
    std::int32_t size = 0;
    std::memcpy(&size, bytes.data() + offset, sizeof size);
    return static_cast<std::size_t>(std::abs(size));
  };
  std::size_t bin = 0x1000;
  while (bin < bytes.size() && bytes.compare(bin, 4, "hbin") == 0) {
    const std::size_t end = bin + sizeAt(bin + 8);
    std::size_t cell = bin + 0x20;
    while (cell < end && sizeAt(cell) != 0) {
      cell += sizeAt(cell);
    }
    if (cell != end) {
      return false;
    }
    bin = end;
  }
  return bin == bytes.size();
}

TEST_F(HiveLayoutTest, LargeValuesLieInPartsWhereTheVersionHasThem) {
  setVersion(5);
  open();
  std::map<std::u16string, std::string> values;
  for (const std::size_t size : {16344U, 16345U, 20'000U, 32'688U, 100'001U}) {
    std::string bytes;
    while (bytes.size() < size) {
      bytes += std::to_string(bytes.size()) + ",";
    }
    bytes.resize(size);
    values[u"of " + std::u16string(size % 7, u'x') + std::u16string(size % 11, u'y')] = bytes;
  }
  ASSERT_EQ(values.size(), 5U);
  for (const auto& [name, bytes] : values) {
    setValue(vendor, name, REG_BINARY, bytes);
  }
  computer->save();
  EXPECT_TRUE(isTiled(disk.read(software)));
  open();
  for (const auto& [name, bytes] : values) {
    const machine::RegistryValue* value = registry().values(key(vendor)).find(name);
    ASSERT_NE(value, nullptr);
    EXPECT_TRUE(std::string(reinterpret_cast<const char*>(value->data), value->dataSize) == bytes);
  }
  EXPECT_EQ(numberAt(disk.read(software), nodeOf("Vendor") + 0x44), 100'001U);
}

TEST_F(HiveLayoutTest, TheRecordOfALargeValueNamesItsParts) {
  setVersion(5);
  open();
  registry().eraseValue(key(vendor), u"x");
  setValue(vendor, u"big", REG_BINARY, std::string(16344, 'a') + std::string(16344, 'b') + "end");
  computer->save();
  const std::string bytes = disk.read(software);
  const std::size_t value = follow(bytes, follow(bytes, nodeOf("Vendor") + 0x2C) + 4);
  EXPECT_EQ(numberAt(bytes, value + 8), 32'691U);
  const std::size_t record = follow(bytes, value + 12);
  EXPECT_EQ(bytes.substr(record + 4, 4), "db\3\0"s);
  const std::size_t list = follow(bytes, record + 8);
  EXPECT_TRUE(bytes.substr(follow(bytes, list + 4) + 4, 16344) == std::string(16344, 'a'));
  EXPECT_TRUE(bytes.substr(follow(bytes, list + 8) + 4, 16344) == std::string(16344, 'b'));
  EXPECT_EQ(bytes.substr(follow(bytes, list + 12) + 4, 3), "end");
  EXPECT_EQ(static_cast<std::int32_t>(numberAt(bytes, follow(bytes, list + 8))), -16352);
}

TEST_F(HiveLayoutTest, AHiveOfAnOldVersionHasLargeValuesInOnePiece) {
  setVersion(3);
  open();
  setValue(vendor, u"big", REG_BINARY, std::string(20'000, 'a'));
  computer->save();
  EXPECT_NE(disk.read(software).find(std::string(20'000, 'a')), std::string::npos);
  EXPECT_TRUE(isTiled(disk.read(software)));
}

}  // namespace
}  // namespace zelvreg::fixture
