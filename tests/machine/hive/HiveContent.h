// All that a hive holds, as it was read: to compare what the program reads with what libhivex does.
#ifndef ZELVREG_TESTS_MACHINE_HIVE_HIVE_CONTENT_H
#define ZELVREG_TESTS_MACHINE_HIVE_HIVE_CONTENT_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zelvreg::fixture {

struct HiveContent {
  struct Value {
    std::string name;  // UTF-8 that keeps halves of characters
    std::uint32_t type = 0;
    std::string bytes;
    bool operator==(const Value&) const = default;
  };
  struct Key {
    std::string name;  // of the root, nothing
    std::vector<std::uint32_t> subkeys;
    std::vector<Value> values;
    bool operator==(const Key&) const = default;
  };
  std::map<std::uint32_t, Key> keys;  // by node
  bool isWhole = true;                // nothing was passed over
};

// Subkeys of a key are read before those below them, and each node once. None if the hive is
// refused.
std::optional<HiveContent> readWithReader(std::span<const std::byte> hive);
// In a process of its own, since libhivex may not survive what it reads.
std::optional<HiveContent> readWithLibrary(const std::filesystem::path& file);

}  // namespace zelvreg::fixture

#endif
