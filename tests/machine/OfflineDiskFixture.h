// A mounted disk with hives for tests that change it, and what is in a hive file, as libhivex reads
// it.
#ifndef ZELVREG_TESTS_MACHINE_OFFLINE_DISK_FIXTURE_H
#define ZELVREG_TESTS_MACHINE_OFFLINE_DISK_FIXTURE_H

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "machine/HiveBuilder.h"
#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"
#include "machine/base/MachineError.h"
#include "machine/registry/Registry.h"

namespace zelvreg::fixture {

// Keys by path ("\\Vendor\\Product"), and values as path, "|" and name, each with its type and
// bytes.
using HiveContent = std::map<std::string, std::string>;

inline void addContent(HiveContent& content, hive_h* hive, hive_node_h node,
                       const std::string& path) {
  content[path];
  hive_value_h* values = hivex_node_values(hive, node);
  for (const hive_value_h* value = values; value != nullptr && *value != 0; ++value) {
    hive_type type = hive_t_none;
    std::size_t size = 0;
    char* name = hivex_value_key(hive, *value);
    char* bytes = hivex_value_value(hive, *value, &type, &size);
    std::uint32_t number = 0;
    std::memcpy(&number, &type, sizeof number);
    content[path + "|" + name] = std::to_string(number) + ":" + std::string(bytes, size);
    free(name);
    free(bytes);
  }
  free(values);
  hive_node_h* children = hivex_node_children(hive, node);
  for (const hive_node_h* child = children; child != nullptr && *child != 0; ++child) {
    char* name = hivex_node_name(hive, *child);
    addContent(content, hive, *child, path + "\\" + name);
    free(name);
  }
  free(children);
}

inline HiveContent contentOf(const std::filesystem::path& file) {
  HiveContent content;
  hive_h* hive = hivex_open(file.c_str(), 0);
  if (hive == nullptr) {
    ADD_FAILURE() << file << " is no hive";
    return content;
  }
  addContent(content, hive, hivex_root(hive), "");
  hivex_close(hive);
  return content;
}

// What differs: "+" and a key or value that came, "-" that went, "*" that has other content.
inline std::set<std::string> differences(const HiveContent& before, const HiveContent& after) {
  std::set<std::string> lines;
  for (const auto& [name, value] : before) {
    const auto found = after.find(name);
    if (found == after.end()) {
      lines.insert("-" + name);
    } else if (found->second != value) {
      lines.insert("*" + name);
    }
  }
  for (const auto& [name, value] : after) {
    if (!before.contains(name)) {
      lines.insert("+" + name);
    }
  }
  return lines;
}

class OfflineDiskTest : public ::testing::Test {
 protected:
  // The disk lies below this folder.
  explicit OfflineDiskTest(
      const std::filesystem::path& above = std::filesystem::temp_directory_path())
      : disk(above) {}

  using Lines = std::set<std::string>;
  static constexpr const char* software = "Windows/System32/config/SOFTWARE";
  static constexpr const char* system = "Windows/System32/config/SYSTEM";
  static constexpr const char* anna = "Users/Anna/NTUSER.DAT";
  static constexpr const char* annasClasses =
      "Users/Anna/AppData/Local/Microsoft/Windows/UsrClass.dat";

  // A hive at a path on the disk, its folders made.
  [[nodiscard]] HiveBuilder hive(const std::string& path) const {
    const std::filesystem::path file = disk.path() / path;
    std::filesystem::create_directories(file.parent_path());
    return HiveBuilder(file);
  }

  // The same, of a hive that is there.
  [[nodiscard]] HiveBuilder more(const std::string& path) const {
    return HiveBuilder::onto(disk.path() / path);
  }

  void open() {
    computer.reset();
    computer = machine::Machine::openOffline({.root = disk.path(),
                                              .drives = {},
                                              .user = currentUser,
                                              .leavesLogs = leavesLogs,
                                              .keptBackups = keptBackups});
  }

  machine::Registry& registry() { return computer->registry(); }

  machine::RegistryKey& key(const std::string& path) {
    machine::RegistryKey* found = registry().find(path);
    if (found == nullptr) {
      throw std::runtime_error("no key " + path);
    }
    return *found;
  }

  void setValue(const std::string& path, std::u16string_view name, DWORD type,
                std::string_view bytes) {
    registry().setValue(key(path), name, type,
                        {reinterpret_cast<const std::byte*>(bytes.data()), bytes.size()});
  }

  // The line with which saving is refused; the empty text if it is not.
  std::string refusal() {
    try {
      computer->save();
    } catch (const machine::MachineError& error) {
      EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
      return error.what();
    }
    return "";
  }

  [[nodiscard]] HiveContent content(const std::string& file) const {
    return contentOf(disk.path() / file);
  }

  // Makes the two sequence numbers in a hive's header differ by setting the one at this offset.
  void makeUnclean(const std::string& file, std::size_t offset) const {
    std::string bytes = disk.read(file);
    constexpr std::size_t checksum = 0x1FC;
    bytes[checksum] = static_cast<char>(bytes[checksum] ^ bytes[offset] ^ 77);
    bytes[offset] = 77;
    disk.write(file, bytes);
  }

  // All files on the disk with their bytes.
  [[nodiscard]] std::map<std::string, std::string> allFiles() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(disk.path())) {
      if (entry.is_regular_file()) {
        const std::string name = std::filesystem::relative(entry.path(), disk.path()).string();
        files[name] = disk.read(name);
      }
    }
    return files;
  }

  TemporaryFolder disk;
  std::optional<std::string> currentUser;  // without one, the one whose hive was written last
  bool leavesLogs = false;
  std::size_t keptBackups = 3;
  std::unique_ptr<machine::Machine> computer;
};

}  // namespace zelvreg::fixture

#endif
