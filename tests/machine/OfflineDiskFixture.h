// A mounted disk with hives for tests that change it, and how the content of a hive has changed.
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
#include "machine/LibraryContent.h"
#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"
#include "machine/base/MachineError.h"
#include "machine/registry/Registry.h"

namespace zelvreg::fixture {

inline HiveContent contentOf(const std::filesystem::path& file) {
  std::optional<HiveContent> content = libraryContent(file);
  EXPECT_TRUE(content) << file << " is no hive";
  return content.value_or(HiveContent());
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
