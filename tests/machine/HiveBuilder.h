// Makes small hive files for tests, with libhivex itself.
#ifndef ZELVREG_TESTS_MACHINE_HIVE_BUILDER_H
#define ZELVREG_TESTS_MACHINE_HIVE_BUILDER_H

#include <hivex.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zelvreg::fixture {

class HiveBuilder {
 public:
  // An empty hive in this file; its folder must exist.
  explicit HiveBuilder(const std::filesystem::path& file)
      : HiveBuilder(openEmptyHive(file), file) {}
  // The same onto a hive that is there.
  static HiveBuilder onto(const std::filesystem::path& file) {
    return {hivex_open(file.c_str(), HIVEX_OPEN_WRITE), file};
  }
  ~HiveBuilder() {
    hivex_commit(hive, nullptr, 0);
    hivex_close(hive);
  }
  HiveBuilder(const HiveBuilder&) = delete;
  HiveBuilder& operator=(const HiveBuilder&) = delete;

  // The key at a path of names separated by backslashes; the empty path is the root.
  hive_node_h key(std::string_view path) {
    hive_node_h node = hivex_root(hive);
    while (!path.empty()) {
      const std::size_t end = std::min(path.find('\\'), path.size());
      const std::string name(path.substr(0, end));
      const hive_node_h found = hivex_node_get_child(hive, node, name.c_str());
      node = found != 0 ? found : hivex_node_add_child(hive, node, name.c_str());
      path.remove_prefix(std::min(end + 1, path.size()));
    }
    return node;
  }

  void value(std::string_view path, std::string name, int type, std::string bytes) {
    hive_set_value given{name.data(), static_cast<hive_type>(type), bytes.size(), bytes.data()};
    if (hivex_node_set_value(hive, key(path), &given, 0) != 0) {
      throw std::runtime_error("no value " + name);
    }
  }

  // ASCII text, stored as UTF-16 with its terminator.
  void text(std::string_view path, const std::string& name, std::string_view ascii, int type = 1) {
    std::string bytes;
    for (const char letter : std::string(ascii) + '\0') {
      bytes += {letter, '\0'};
    }
    value(path, name, type, bytes);
  }

  void number(std::string_view path, const std::string& name, std::uint32_t number) {
    value(path, name, 4, std::string(reinterpret_cast<const char*>(&number), sizeof number));
  }

 private:
  HiveBuilder(hive_h* opened, const std::filesystem::path& file) : hive(opened) {
    if (hive == nullptr) {
      throw std::runtime_error("no hive: " + file.string());
    }
  }

  // A header and one bin that holds the root key and the security record that all keys share.
  static hive_h* openEmptyHive(const std::filesystem::path& file) {
    constexpr std::size_t pageSize = 4096;
    constexpr std::size_t rootOffset = 0x20;  // after the bin's own header
    constexpr std::uint32_t nothing = 0xFFFFFFFF;
    std::array<char, 2 * pageSize> bytes{};
    const auto put = [&bytes](std::size_t offset, std::uint32_t number) {
      std::memcpy(bytes.data() + offset, &number, sizeof number);
    };
    std::memcpy(bytes.data(), "regf", 4);
    put(4, 1);
    put(8, 1);
    put(0x14, 1);
    put(0x18, 3);
    put(0x20, 1);
    put(0x24, rootOffset);
    put(0x28, pageSize);
    put(0x2C, 1);
    std::uint32_t checksum = 0;
    for (std::size_t offset = 0; offset < 0x1FC; offset += 4) {
      std::uint32_t word = 0;
      std::memcpy(&word, bytes.data() + offset, sizeof word);
      checksum ^= word;
    }
    put(0x1FC, checksum);

    constexpr std::size_t bin = pageSize;
    std::memcpy(bytes.data() + bin, "hbin", 4);
    put(bin + 8, pageSize);
    constexpr std::size_t root = bin + rootOffset;
    constexpr std::size_t rootSize = 0x58;
    put(root, static_cast<std::uint32_t>(-static_cast<std::int32_t>(rootSize)));
    std::memcpy(bytes.data() + root + 4, "nk", 2);
    bytes[root + 6] = 0x2C;  // a root with a narrow name
    for (const std::size_t offset : {0x20U, 0x24U, 0x2CU, 0x34U}) {
      put(root + offset, nothing);
    }
    put(root + 0x30, rootOffset + rootSize);
    const std::string_view name = "ROOT";
    bytes[root + 0x4C] = static_cast<char>(name.size());
    std::memcpy(bytes.data() + root + 0x50, name.data(), name.size());

    constexpr std::size_t security = root + rootSize;
    constexpr std::size_t securitySize = 0x30;
    constexpr std::size_t descriptorSize = 20;
    put(security, static_cast<std::uint32_t>(-static_cast<std::int32_t>(securitySize)));
    std::memcpy(bytes.data() + security + 4, "sk", 2);
    put(security + 8, rootOffset + rootSize);  // the list of records is this one alone
    put(security + 12, rootOffset + rootSize);
    put(security + 16, 1);
    put(security + 20, descriptorSize);
    bytes[security + 24] = 1;
    bytes[security + 27] = static_cast<char>(0x80);
    put(security + securitySize,
        static_cast<std::uint32_t>(pageSize - rootOffset - rootSize - securitySize));
    std::ofstream(file, std::ios::binary).write(bytes.data(), bytes.size());
    return hivex_open(file.c_str(), HIVEX_OPEN_WRITE);
  }

  hive_h* hive;
};

}  // namespace zelvreg::fixture

#endif
