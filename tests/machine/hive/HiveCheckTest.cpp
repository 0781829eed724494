#include "machine/hive/HiveCheck.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "machine/HiveBuilder.h"
#include "machine/OfflineDiskFixture.h"
#include "machine/hive/HiveBytes.h"
#include "machine/hive/HiveFile.h"

namespace zelvreg::fixture {
namespace {

using machine::HiveBytes;
using namespace machine::hiveFormat;

class HiveCheckTest : public OfflineDiskTest {
 protected:
  void SetUp() override {
    HiveBuilder builder = hive(software);
    builder.text(R"(one\inner)", "name", "a longer text");
    builder.text("two", "name", "another longer text");
    builder.value("two", "parts", 3, std::string(3 * partSize, 'x'));
  }

  // The cell of the key of this name.
  static std::size_t keyNamed(const HiveBytes& bytes, std::string_view name) {
    const std::size_t at = bytes.all().find(name);
    return at == std::string::npos ? 0 : at - keyName;
  }
  // Where the link to the first value of a key leads to.
  static std::size_t firstValue(const HiveBytes& bytes, std::size_t node) {
    return bytes.follow(bytes.follow(node + valueList) + cellHeader);
  }

  // Changes the hive's file.
  void damage(const std::function<void(HiveBytes&)>& change) const {
    HiveBytes bytes(disk.read(software));
    change(bytes);
    disk.write(software, bytes.all());
  }

  // Why it is not written; the empty text if it would be.
  std::string reason() {
    const auto found = machine::whyUnsound(machine::HiveFile(disk.path() / software));
    open();
    const auto lines = computer->uncleanHives();
    EXPECT_EQ(lines.empty() ? "" : lines.front(), found.value_or(""));
    return found.value_or("");
  }
};

TEST_F(HiveCheckTest, AWholeHiveIsSound) { EXPECT_EQ(reason(), ""); }

TEST_F(HiveCheckTest, AnEntryThatLeadsToAnothersKeyIsNamedWithItsKey) {
  damage([](HiveBytes& bytes) {
    const std::size_t list = bytes.follow(keyNamed(bytes, "one") + subkeyList);
    bytes.putLink(list + listEntries, keyNamed(bytes, "two"));
  });
  EXPECT_NE(reason().find("the key \\one: its list of subkeys leads to a key of another"),
            std::string::npos)
      << reason();
}

TEST_F(HiveCheckTest, AnEntryThatLeadsToAKeyTwiceIsDamage) {
  damage([](HiveBytes& bytes) {
    const std::size_t list = bytes.follow(bytes.follow(rootOffset) + subkeyList);
    bytes.putLink(list + listEntries, keyNamed(bytes, "two"));
  });
  EXPECT_NE(reason().find("belongs to another key or value"), std::string::npos) << reason();
}

TEST_F(HiveCheckTest, AValueWhoseDataIsItsOwnCellIsDamage) {
  damage([](HiveBytes& bytes) {
    const std::size_t value = firstValue(bytes, keyNamed(bytes, "inner"));
    bytes.put<std::uint32_t>(value + valueSize, 8);
    bytes.putLink(value + valueData, value);
  });
  EXPECT_NE(reason().find("the key \\one\\inner: a part of it belongs to another"),
            std::string::npos)
      << reason();
}

TEST_F(HiveCheckTest, APartThatIsFreeOrOutsideOrTooSmallIsDamage) {
  damage([](HiveBytes& bytes) {
    const std::size_t value = firstValue(bytes, keyNamed(bytes, "inner"));
    bytes.put<std::int32_t>(value, -bytes.get<std::int32_t>(value));
  });
  EXPECT_NE(reason().find("counts as free"), std::string::npos) << reason();
  damage([](HiveBytes& bytes) {
    const std::size_t value = firstValue(bytes, keyNamed(bytes, "inner"));
    bytes.put<std::int32_t>(value, -bytes.get<std::int32_t>(value));
    bytes.put<std::uint32_t>(value + valueSize, 4096);
  });
  EXPECT_NE(reason().find("no proper size"), std::string::npos) << reason();
  damage([](HiveBytes& bytes) {
    bytes.put<std::uint32_t>(keyNamed(bytes, "inner") + valueList, 0x10000000);
  });
  EXPECT_NE(reason(), "");
}

TEST_F(HiveCheckTest, KeysLieNoDeeperThanWindowsLetsThem) {
  std::string path = "deep";
  for (int level = 0; level < 520; ++level) {
    path += "\\d";
  }
  hive(software).key(path);
  EXPECT_NE(reason().find("keys lie deeper"), std::string::npos) << reason();
}

TEST_F(HiveCheckTest, AnAccessListIsOneAndIsCountedByItsKeys) {
  const std::string whole = disk.read(software);
  damage([](HiveBytes& bytes) {
    bytes.put<std::uint32_t>(bytes.follow(keyNamed(bytes, "one") + keySecurity) + securityUses, 1);
  });
  EXPECT_NE(reason().find("more keys use one of its access lists than are counted"),
            std::string::npos)
      << reason();
  disk.write(software, whole);
  damage([](HiveBytes& bytes) {
    bytes.put<char>(bytes.follow(keyNamed(bytes, "one") + keySecurity) + cellKind, 'x');
  });
  EXPECT_NE(reason().find("its access list is something else"), std::string::npos) << reason();
  disk.write(software, whole);
  damage([](HiveBytes& bytes) {
    bytes.put<std::uint32_t>(keyNamed(bytes, "inner") + keySecurity, noLink);
  });
  EXPECT_EQ(reason(), "");
}

TEST_F(HiveCheckTest, AClassThatIsThereIsTheKeysAlone) {
  damage([](HiveBytes& bytes) {
    const std::size_t node = keyNamed(bytes, "inner");
    bytes.put<std::uint16_t>(node + keyClassLength, 4);
    bytes.put<std::uint32_t>(node + keyClass, noLink);
  });
  EXPECT_EQ(reason(), "");
  damage([](HiveBytes& bytes) {
    const std::size_t node = keyNamed(bytes, "inner");
    bytes.putLink(node + keyClass, firstValue(bytes, node));
  });
  EXPECT_NE(reason().find("belongs to another key or value"), std::string::npos) << reason();
}

TEST_F(HiveCheckTest, AClassOfNoBytesHasNoCell) {
  const auto resize = [this](std::uint16_t size) {
    damage([size](HiveBytes& bytes) {
      const std::size_t node = keyNamed(bytes, "inner");
      bytes.put<std::uint16_t>(node + keyClassLength, size);
      bytes.putLink(node + keyClass, firstValue(bytes, node));
    });
  };
  resize(0);
  EXPECT_EQ(reason(), "");
  resize(1);
  EXPECT_NE(reason().find("belongs to another key or value"), std::string::npos) << reason();
}

TEST_F(HiveCheckTest, DataMayFillTheirCellAndNoMore) {
  const auto resize = [this](std::uint32_t more) {
    damage([more](HiveBytes& bytes) {
      const std::size_t value = firstValue(bytes, keyNamed(bytes, "inner"));
      const auto cell = -bytes.get<std::int32_t>(bytes.follow(value + valueData));
      bytes.put<std::uint32_t>(value + valueSize, static_cast<std::uint32_t>(cell) - 4 + more);
    });
  };
  resize(0);
  EXPECT_EQ(reason(), "");
  resize(1);
  EXPECT_NE(reason().find("no proper size"), std::string::npos) << reason();
}

TEST_F(HiveCheckTest, ACellMayEndWithItsHive) {
  damage([](HiveBytes& bytes) {
    const std::size_t value = firstValue(bytes, keyNamed(bytes, "inner"));
    const std::size_t cell = bytes.all().size() - 16;
    bytes.put<std::int32_t>(cell, -16);
    bytes.put<std::uint32_t>(value + valueSize, 12);
    bytes.putLink(value + valueData, cell);
  });
  EXPECT_EQ(reason(), "");
  damage([](HiveBytes& bytes) { bytes.put<std::int32_t>(bytes.all().size() - 16, -24); });
  EXPECT_NE(reason().find("no proper size"), std::string::npos) << reason();
}

TEST_F(HiveCheckTest, DataInALinkIsNoLongerThanALink) {
  const auto resize = [this](std::uint32_t size) {
    damage([size](HiveBytes& bytes) {
      const std::size_t value = firstValue(bytes, keyNamed(bytes, "inner"));
      bytes.put<std::uint32_t>(value + valueSize, sizeOfDataInLink | size);
    });
  };
  resize(4);
  EXPECT_EQ(reason(), "");
  resize(5);
  EXPECT_NE(reason().find("a value of it has no proper size"), std::string::npos) << reason();
}

TEST_F(HiveCheckTest, ACountThatIsNotTrueIsDamage) {
  damage([](HiveBytes& bytes) {
    bytes.put<std::uint32_t>(bytes.follow(rootOffset) + subkeyCount, 1);
  });
  EXPECT_NE(reason().find("as many subkeys"), std::string::npos) << reason();
}

TEST_F(HiveCheckTest, AHeaderThatSpeaksOfMoreThanThereIsLeavesTheHiveOut) {
  HiveBuilder(disk.path() / "Windows/System32/config/SYSTEM").key("x");
  for (const std::uint32_t size : {0x80000000U, 0xFFFFF000U, 0x20000U}) {
    damage([size](HiveBytes& bytes) { bytes.put<std::uint32_t>(binsSizeOffset, size); });
    open();
    ASSERT_EQ(computer->damagedHives().size(), 1U);
    EXPECT_NE(computer->damagedHives()[0].find("more content than it has"), std::string::npos);
  }
}

TEST_F(HiveCheckTest, WhatReadingPassesOverIsNamedAndTheHiveIsNotWritten) {
  damage([](HiveBytes& bytes) {
    const std::size_t list = bytes.follow(keyNamed(bytes, "one") + subkeyList);
    bytes.putLink(list + listEntries, keyNamed(bytes, "two"));
  });
  open();
  EXPECT_TRUE(computer->damagedHives().empty());
  const auto files = allFiles();
  EXPECT_EQ(registry().children(key(R"(HKEY_LOCAL_MACHINE\SOFTWARE)")).size(), 2U);
  EXPECT_EQ(registry().children(key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\one)")).size(), 0U);
  ASSERT_EQ(computer->damagedHives().size(), 1U);
  EXPECT_NE(computer->damagedHives()[0].find("SOFTWARE\\one"), std::string::npos);
  registry().erase(key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\two)"));
  EXPECT_NE(refusal(), "");
  EXPECT_TRUE(allFiles() == files);
}

TEST_F(HiveCheckTest, AHiveWithAnyBytesChangedIsWrittenWholeOrNotAtAll) {
  const std::string whole = disk.read(software);
  // Where the cells of the keys and values are, and not the long data after them.
  const std::size_t end = whole.find(std::string(64, 'x'));
  std::mt19937 random(1);
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  int written = 0;
  int refused = 0;
  constexpr int hives = 400;
  for (int hive = 0; hive < hives; ++hive) {
    std::string bytes = whole;
    for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
      bytes[binsOffset + below(end - binsOffset)] = static_cast<char>(below(256));
    }
    computer.reset();
    disk.write(software, bytes);
    open();
    machine::RegistryKey* two = registry().find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\two)");
    machine::RegistryKey* one = registry().find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\one)");
    if (two == nullptr || one == nullptr) {
      continue;
    }
    registry().erase(*two);
    registry().setValue(*one, u"new", REG_BINARY, {});
    const bool isRefused = !refusal().empty();
    (isRefused ? refused : written) += 1;
    EXPECT_TRUE(isRefused ? disk.read(software) == bytes
                          : !machine::whyUnsound(machine::HiveFile(disk.path() / software)))
        << hive;
  }
  EXPECT_GT(written, 0);
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace zelvreg::fixture
