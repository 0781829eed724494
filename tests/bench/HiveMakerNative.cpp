// Only native: the bench is built on the system that builds.
#include "HiveMaker.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

#include "machine/TemporaryFolder.h"
#include "machine/hive/HiveCheck.h"
#include "machine/hive/HiveFile.h"

namespace zelvreg::bench {
namespace {

using machine::HiveFile;
using machine::Registry;
using machine::RegistryKey;

constexpr const char* user = "S-1-5-21-1-1-1-1001";

std::u16string numbered(std::size_t number) {
  const std::string text = "Key" + std::to_string(number);
  return {text.begin(), text.end()};
}

void setData(Registry& registry, RegistryKey& key, std::u16string_view name, std::size_t size) {
  registry.setValue(key, name, REG_BINARY, std::vector<std::byte>(size, std::byte{7}));
}

// Every list of lists, every kind of name, and data of every length around those that lie in a
// link.
void fill(Registry& registry, RegistryKey& root) {
  for (std::size_t number = 0; number < 1200; ++number) {
    RegistryKey& key = registry.makeChild(root, numbered(number));
    setData(registry, key, u"", number % 10);
    setData(registry, key, u"\u00E4", 4000 * (number % 3));
    setData(registry, registry.makeChild(key, u"\u4E2D"), u"\u0416\xD800", 16344);
  }
}

void expectSame(Registry& first, RegistryKey& key, Registry& second, RegistryKey& other) {
  const machine::ValueList& values = first.values(key);
  ASSERT_EQ(values.size(), second.values(other).size());
  for (std::size_t index = 0; index < values.size(); ++index) {
    const machine::RegistryValue& value = *second.values(other).at(index);
    EXPECT_EQ(values.at(index)->name(), value.name());
    EXPECT_EQ(values.at(index)->type, value.type);
    EXPECT_TRUE(std::ranges::equal(values.at(index)->bytes(), value.bytes()));
  }
  std::size_t index = 0;
  first.children(key).forEach([&](RegistryKey* child) {
    RegistryKey* const* found = second.children(other).at(index++);
    ASSERT_NE(found, nullptr);
    ASSERT_EQ((*found)->name(), child->name());
    expectSame(first, *child, second, **found);
  });
  EXPECT_EQ(index, second.children(other).size());
}

TEST(HiveMaker, AHiveHoldsWhatTheRegistryHeldAndIsWhole) {
  const fixture::TemporaryFolder folder;
  const auto file = folder.path() / "SOFTWARE";
  Registry registry(64, user);
  RegistryKey& root = registry.makeChild(registry.machineRoot(), u"Some");
  fill(registry, root);
  makeHive(file, registry, root);
  EXPECT_EQ(machine::whyUnsound(HiveFile(file)), std::nullopt);
  Registry read(64, user);
  read.mount(read.machineRoot(), u"Some", std::make_unique<HiveFile>(file));
  expectSame(registry, root, read, *read.child(read.machineRoot(), u"Some"));
  EXPECT_TRUE(read.hiveFiles().front()->damage().empty());
}

TEST(HiveMaker, BuiltInLinksAreLeftOut) {
  const fixture::TemporaryFolder folder;
  const auto file = folder.path() / "SOFTWARE";
  Registry registry(64, user);
  RegistryKey& root = registry.makeChild(registry.machineRoot(), u"Software");
  registry.makeChild(registry.makeChild(root, u"Classes"), u"Wow6432Node");
  ASSERT_TRUE(registry.find("HKEY_LOCAL_MACHINE\\Software\\Wow6432Node") != nullptr);
  makeHive(file, registry, root);
  Registry read(64, user);
  read.mount(read.machineRoot(), u"Other", std::make_unique<HiveFile>(file));
  EXPECT_NE(read.find("HKEY_LOCAL_MACHINE\\Other\\Wow6432Node"), nullptr);
  EXPECT_EQ(read.find("HKEY_LOCAL_MACHINE\\Other\\Wow6432Node\\Classes"), nullptr);
}

TEST(HiveMaker, AValueThatFitsInNoCellIsRefused) {
  const fixture::TemporaryFolder folder;
  Registry registry(64, user);
  setData(registry, registry.machineRoot(), u"large", 16345);
  EXPECT_THROW(makeHive(folder.path() / "x", registry, registry.machineRoot()), std::runtime_error);
}

}  // namespace
}  // namespace zelvreg::bench
