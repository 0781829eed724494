// A hive that was put together, and the program's reader of it.
#ifndef ZELVREG_TESTS_MACHINE_HIVE_OPENED_HIVE_H
#define ZELVREG_TESTS_MACHINE_HIVE_OPENED_HIVE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "machine/hive/HiveReader.h"
#include "machine/hive/RawHive.h"

namespace zelvreg::fixture {

// The bytes are in memory of their own, so that a sanitizer sees when one beside them is read.
class OpenedHive {
 public:
  using Names = std::vector<std::string>;
  using Answer = machine::FoundSubkey::Answer;

  explicit OpenedHive(const RawHive& hive)
      : file(hive.file()), reader(std::as_bytes(std::span(file))) {}

  // The names of the subkeys of a key, and "damage" at the end if anything was passed over.
  Names subkeys(std::size_t node, std::span<const std::uint32_t> known = {}) {
    Names names;
    const bool isWhole = reader.subkeys(
        static_cast<std::uint32_t>(node), known,
        [&](const machine::HiveSubkey& subkey) { names.push_back(narrow(subkey.name)); });
    if (!isWhole) names.emplace_back("damage");
    return names;
  }

  // The same of its values, each with the number of its bytes.
  Names values(std::size_t node) {
    Names names;
    const bool isWhole =
        reader.values(static_cast<std::uint32_t>(node), [&](const machine::HiveValue& value) {
          names.push_back(narrow(value.name) + "=" + std::to_string(value.bytes.size()));
        });
    if (!isWhole) names.emplace_back("damage");
    return names;
  }

  Answer search(std::size_t node, std::u16string_view name) {
    found = reader.findSubkey(static_cast<std::uint32_t>(node), name);
    return found.answer;
  }

  machine::FoundSubkey found;  // by the last search

 private:
  static std::string narrow(const machine::HiveText& name) {
    const std::u16string text = name.text();
    return {text.begin(), text.end()};
  }

  std::string file;

 public:
  machine::HiveReader reader;
};

}  // namespace zelvreg::fixture

#endif
