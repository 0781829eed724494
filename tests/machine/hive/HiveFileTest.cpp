#include "machine/hive/HiveFile.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "machine/HiveBuilder.h"
#include "machine/TemporaryFolder.h"
#include "machine/base/MachineError.h"
#include "machine/registry/Registry.h"

namespace zelvreg::fixture {
namespace {

using machine::HiveFile;
using machine::Registry;
using machine::RegistryKey;

constexpr const char* sid = "S-1-5-21-1-1-1-1001";

class HiveFileTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::filesystem::path file() const { return folder.path() / "hive"; }

  // The hive, mounted at HKEY_LOCAL_MACHINE\SOFTWARE of a 64-bit registry.
  Registry& mounted() {
    registry.mount(registry.machineRoot(), u"SOFTWARE", std::make_unique<HiveFile>(file()));
    registry.finishLoading();
    return registry;
  }

  void overwrite(std::size_t offset, std::string_view bytes) const {
    std::fstream stream(file(), std::ios::binary | std::ios::in | std::ios::out);
    stream.seekp(static_cast<std::streamoff>(offset));
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }

  [[nodiscard]] std::size_t offsetOf(std::string_view bytes) const {
    return folder.read("hive").find(bytes);
  }

  TemporaryFolder folder;
  Registry registry{64, sid};
};

TEST_F(HiveFileTest, KeysAndValuesAreThoseOfTheHive) {
  {
    HiveBuilder hive(file());
    hive.text(R"(Vendor\Product)", "name", "text");
    hive.value(R"(Vendor\Product)", "", 3, std::string("\0\1\xFF", 3));
    hive.value(R"(Vendor\Product)", "odd", 1, "abc");
    hive.key("\xC3\xA4rger");
  }
  Registry& tree = mounted();
  RegistryKey* product = tree.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\vendor\PRODUCT)");
  ASSERT_NE(product, nullptr);
  ASSERT_EQ(tree.values(*product).size(), 3U);
  EXPECT_EQ(tree.values(*product).find(u"NAME")->dataSize, 10U);
  EXPECT_EQ(tree.values(*product).find(u"")->type, REG_BINARY);
  EXPECT_EQ(tree.values(*product).find(u"odd")->dataSize, 3U);
  EXPECT_NE(tree.find("HKEY_LOCAL_MACHINE\\SOFTWARE\\\xC3\x84RGER"), nullptr);
  EXPECT_FALSE(tree.contentChanged());
}

TEST_F(HiveFileTest, NamesWithHalfOfACharacterAreReadToo) {
  {
    HiveBuilder hive(file());
    hive.text("Vendor\\\u4E2Dx\\Below", "\u8868x", "text");
    hive.text("Vendor", "", "default");
  }
  overwrite(offsetOf(std::string("\x2D\x4Ex\0", 4)), std::string("\0\xD8", 2));
  overwrite(offsetOf(std::string("\x68\x88x\0", 4)), std::string("\0\xDC", 2));
  Registry& tree = mounted();
  RegistryKey* vendor = tree.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)");
  ASSERT_NE(vendor, nullptr);
  EXPECT_EQ(tree.values(*vendor).size(), 1U);
  RegistryKey* below = tree.find("HKEY_LOCAL_MACHINE\\SOFTWARE\\Vendor\\\xED\xA0\x80x\\Below");
  ASSERT_NE(below, nullptr);
  ASSERT_NE(tree.values(*below).find(u"\xDC00x"), nullptr);
  EXPECT_EQ(tree.values(*below).find(u"\xDC00x")->dataSize, 10U);
  EXPECT_TRUE(below->hive->damage().empty());
}

TEST_F(HiveFileTest, OnlyWhatIsAskedForIsRead) {
  {
    HiveBuilder hive(file());
    hive.text(R"(a\b)", "x", "y");
    hive.text(R"(a\beside)", "x", "y");
    hive.text(R"(c\d)", "x", "y");
  }
  Registry& tree = mounted();
  RegistryKey* inner = tree.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\a\b)");
  ASSERT_NE(inner, nullptr);
  EXPECT_EQ(inner->parent->children.size(), 1U);
  EXPECT_EQ(tree.children(*inner->parent).size(), 2U);
  EXPECT_EQ(tree.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\a\b)"), inner);
  EXPECT_TRUE(inner->childrenPending);
  EXPECT_TRUE(inner->valuesPending);
  EXPECT_TRUE(tree.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\c)")->childrenPending);
}

TEST_F(HiveFileTest, AKeyThatWasFoundByNameAndErasedStaysAway) {
  {
    HiveBuilder hive(file());
    hive.key(R"(a\b)");
    hive.key(R"(a\c)");
  }
  Registry& tree = mounted();
  tree.erase(*tree.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\a\b)"));
  RegistryKey* above = tree.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\a)");
  EXPECT_EQ(tree.children(*above).size(), 1U);
  EXPECT_EQ(tree.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\a\b)"), nullptr);
  EXPECT_TRUE(above->hive->damage().empty());
}

TEST_F(HiveFileTest, ManyKeysAreFoundByNameAndThenListedInOrder) {
  constexpr std::size_t count = 50;
  const auto nameOf = [](std::size_t number) { return "Key" + std::to_string(100 + number); };
  {
    HiveBuilder hive(file());
    for (std::size_t number = 0; number < count; ++number) {
      hive.key("top\\" + nameOf(number * 7 % count));
    }
  }
  Registry& tree = mounted();
  RegistryKey* top = tree.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\top)");
  const auto find = [&](std::size_t number) {
    const std::string name = nameOf(number);
    return tree.child(*top, std::u16string(name.begin(), name.end()));
  };
  for (const std::size_t number : {40U, 3U, 17U}) {
    EXPECT_NE(find(number), nullptr);
  }
  EXPECT_EQ(tree.child(*top, u"x"), nullptr);
  EXPECT_EQ(top->children.size(), 3U);
  // After many more it is worth while to read all.
  for (std::size_t number = 0; number < count; ++number) {
    EXPECT_NE(find(number), nullptr);
  }
  EXPECT_FALSE(top->childrenPending);
  std::size_t listed = 0;
  tree.children(*top).forEach([&](const RegistryKey* key) {
    const std::string name = nameOf(listed++);
    EXPECT_EQ(key->name(), std::u16string(name.begin(), name.end()));
  });
  EXPECT_EQ(listed, count);
  EXPECT_TRUE(top->hive->damage().empty());
}

TEST_F(HiveFileTest, ALinkInAHiveLeadsToItsTarget) {
  {
    HiveBuilder hive(file());
    hive.text(R"(Classes\Wow6432Node\CLSID)", "", "target");
    std::string target;
    for (const char letter :
         std::string_view(R"(\Registry\Machine\Software\Classes\Wow6432Node)")) {
      target += {letter, '\0'};
    }
    hive.value(R"(Wow6432Node\Classes)", "SymbolicLinkValue", 6, target);
  }
  EXPECT_NE(mounted().find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Classes\CLSID)"), nullptr);
}

TEST_F(HiveFileTest, KeysOfAHiveCanBeChangedAndAddedInMemory) {
  {
    HiveBuilder hive(file());
    hive.text("a", "x", "old");
    hive.key("b");
  }
  Registry& tree = mounted();
  RegistryKey* software = tree.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE)");
  tree.erase(*tree.child(*software, u"b"));
  tree.makeChild(*software, u"c");
  tree.setValue(*tree.child(*software, u"a"), u"y", REG_BINARY, {});
  const std::array<std::byte, 2> shorter{};
  tree.setValue(*tree.child(*software, u"a"), u"x", REG_SZ, shorter);
  EXPECT_EQ(tree.values(*tree.child(*software, u"a")).find(u"x")->dataSize, 2U);
  EXPECT_EQ(tree.children(*software).size(), 2U);
  EXPECT_EQ(tree.values(*tree.child(*software, u"a")).size(), 2U);
  EXPECT_TRUE(tree.contentChanged());
}

TEST_F(HiveFileTest, AHiveThatCannotBeOpenedIsNamedWithTheReasonInOneLine) {
  const auto messageOf = [this] {
    try {
      const HiveFile hive(file());
      return std::string("it was opened");
    } catch (const machine::MachineError& error) {
      return std::string(error.what());
    }
  };
  EXPECT_NE(messageOf().find("it is not a file"), std::string::npos) << messageOf();
  folder.write("hive", "not a hive at all");
  EXPECT_TRUE(messageOf().starts_with(file().string())) << messageOf();
  EXPECT_NE(messageOf().find("not a registry hive"), std::string::npos) << messageOf();
  folder.write("hive", "");
  EXPECT_NE(messageOf(), "it was opened");
  { const HiveBuilder hive(file()); }
  overwrite(offsetOf("nk"), "xx");
  EXPECT_NE(messageOf(), "it was opened");
  EXPECT_EQ(messageOf().find('\n'), std::string::npos);
}

TEST_F(HiveFileTest, ASubkeyListThatLeadsBackUpwardsEndsThere) {
  {
    HiveBuilder hive(file());
    hive.key(R"(outer\inner)");
  }
  // Let the list of "inner"'s parent hold the parent itself: both lists have one entry, an offset
  // and four letters of the name, so the outer one's offset can take the inner one's place.
  std::string bytes = folder.read("hive");
  std::size_t outerList = std::string::npos;
  std::size_t innerList = std::string::npos;
  for (std::size_t at = bytes.find("lf"); at != std::string::npos; at = bytes.find("lf", at + 1)) {
    if (bytes.compare(at + 8, 4, "oute") == 0) outerList = at;
    if (bytes.compare(at + 8, 4, "inne") == 0) innerList = at;
  }
  for (std::size_t at = bytes.find("lh"); at != std::string::npos; at = bytes.find("lh", at + 1)) {
    (outerList == std::string::npos ? outerList : innerList) = at;
  }
  ASSERT_NE(outerList, std::string::npos);
  ASSERT_NE(innerList, std::string::npos);
  overwrite(innerList + 4, bytes.substr(outerList + 4, 4));
  EXPECT_LE(mounted().count().keys, 4U);
}

TEST_F(HiveFileTest, OfTwoKeysWithOneNameTheFirstIsThere) {
  {
    HiveBuilder hive(file());
    hive.key("twin1");
    hive.key("twin2");
  }
  overwrite(offsetOf("twin2"), "TWIN1");
  Registry& tree = mounted();
  EXPECT_EQ(tree.children(*tree.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE)")).size(), 1U);
}

}  // namespace
}  // namespace zelvreg::fixture
