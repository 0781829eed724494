#include "machine/hive/HiveContent.h"

#include <hivex.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <stdexcept>
#include <string_view>

#include "machine/base/MachineError.h"
#include "machine/base/RunApart.h"
#include "machine/hive/HiveReader.h"
#include "unicode/Unicode.h"

namespace zelvreg::fixture {
namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename Content>
using Owned = std::unique_ptr<Content, Free>;

// Walks with libhivex.
class LibraryWalk {
 public:
  explicit LibraryWalk(hive_h* opened) : hive(opened) {}

  HiveContent go() {
    const hive_node_h root = hivex_root(hive);
    content.keys[static_cast<std::uint32_t>(root)] = {};
    walk(root);
    return std::move(content);
  }

 private:
  void walk(hive_node_h node) {
    addValues(node);
    const Owned<hive_node_h> nodes(hivex_node_children(hive, node));
    content.isWhole = content.isWhole && nodes != nullptr;
    std::vector<std::uint32_t> added;
    for (const hive_node_h* next = nodes.get(); next != nullptr && *next != 0; ++next) {
      const auto number = static_cast<std::uint32_t>(*next);
      const Owned<char> name(hivex_node_name(hive, *next));
      if (name == nullptr || content.keys.contains(number)) {
        content.isWhole = false;
        continue;
      }
      content.keys[number].name.assign(name.get(), hivex_node_name_len(hive, *next));
      added.push_back(number);
    }
    content.keys[static_cast<std::uint32_t>(node)].subkeys = added;
    for (const std::uint32_t number : added) {
      walk(number);
    }
  }

  void addValues(hive_node_h node) {
    const Owned<hive_value_h> values(hivex_node_values(hive, node));
    content.isWhole = content.isWhole && values != nullptr;
    for (const hive_value_h* next = values.get(); next != nullptr && *next != 0; ++next) {
      hive_type type = hive_t_none;
      std::size_t size = 0;
      std::size_t declaredSize = 0;
      const Owned<char> name(hivex_value_key(hive, *next));
      hivex_value_type(hive, *next, &type, &declaredSize);
      errno = 0;
      const Owned<char> bytes(hivex_value_value(hive, *next, &type, &size));
      // libhivex gives what there is of a large value that lacks parts, as if it were whole.
      const bool isCut = size != declaredSize;
      if (name == nullptr || (bytes == nullptr && (errno != 0 || size != 0)) || isCut) {
        content.isWhole = false;
        continue;
      }
      HiveContent::Value value;
      value.name.assign(name.get(), hivex_value_key_len(hive, *next));
      std::memcpy(&value.type, &type, sizeof value.type);
      value.bytes.assign(bytes == nullptr ? "" : bytes.get(), size);
      content.keys[static_cast<std::uint32_t>(node)].values.push_back(std::move(value));
    }
  }

  hive_h* hive;
  HiveContent content;
};

// The content as one text and back, for the way from one process to the other.
class Packing {
 public:
  void put(std::uint32_t number) {
    text.append(reinterpret_cast<const char*>(&number), sizeof number);
  }
  void put(std::string_view part) {
    put(static_cast<std::uint32_t>(part.size()));
    text += part;
  }
  std::string text;
};

class Unpacking {
 public:
  explicit Unpacking(std::string_view packed) : rest(packed) {}
  std::uint32_t number() {
    std::uint32_t value = 0;
    std::memcpy(&value, taken(sizeof value).data(), sizeof value);
    return value;
  }
  std::string part() { return std::string(taken(number())); }
  [[nodiscard]] bool isAtEnd() const { return rest.empty(); }

 private:
  std::string_view taken(std::size_t size) {
    const std::string_view part = rest.substr(0, size);
    rest.remove_prefix(size);
    return part;
  }
  std::string_view rest;
};

std::string packed(const HiveContent& content) {
  Packing packing;
  packing.put(content.isWhole ? 1 : 0);
  for (const auto& [node, key] : content.keys) {
    packing.put(node);
    packing.put(key.name);
    packing.put(static_cast<std::uint32_t>(key.subkeys.size()));
    for (const std::uint32_t subkey : key.subkeys) {
      packing.put(subkey);
    }
    packing.put(static_cast<std::uint32_t>(key.values.size()));
    for (const HiveContent::Value& value : key.values) {
      packing.put(value.name);
      packing.put(value.type);
      packing.put(value.bytes);
    }
  }
  return packing.text;
}

HiveContent unpacked(std::string_view text) {
  Unpacking unpacking(text);
  HiveContent content;
  content.isWhole = unpacking.number() != 0;
  while (!unpacking.isAtEnd()) {
    HiveContent::Key& key = content.keys[unpacking.number()];
    key.name = unpacking.part();
    for (std::uint32_t left = unpacking.number(); left > 0; --left) {
      key.subkeys.push_back(unpacking.number());
    }
    for (std::uint32_t left = unpacking.number(); left > 0; --left) {
      HiveContent::Value& value = key.values.emplace_back();
      value.name = unpacking.part();
      value.type = unpacking.number();
      value.bytes = unpacking.part();
    }
  }
  return content;
}

void walkWithReader(machine::HiveReader& reader, std::uint32_t node, HiveContent& content) {
  HiveContent::Key& key = content.keys[node];
  const bool hasAllValues = reader.values(node, [&](const machine::HiveValue& value) {
    key.values.push_back(
        {.name = utf8(value.name.text()),
         .type = value.type,
         .bytes = {reinterpret_cast<const char*>(value.bytes.data()), value.bytes.size()}});
  });
  const bool hasAllSubkeys = reader.subkeys(node, {}, [&](const machine::HiveSubkey& subkey) {
    content.keys[subkey.node].name = utf8(subkey.name.text());
    key.subkeys.push_back(subkey.node);
  });
  content.isWhole = content.isWhole && hasAllValues && hasAllSubkeys;
  for (const std::uint32_t subkey : key.subkeys) {
    walkWithReader(reader, subkey, content);
  }
}

}  // namespace

std::optional<HiveContent> readWithReader(std::span<const std::byte> hive) {
  try {
    machine::HiveReader reader(hive);
    HiveContent content;
    walkWithReader(reader, reader.root(), content);
    return content;
  } catch (const machine::MachineError&) {
    return std::nullopt;
  }
}

std::optional<HiveContent> readWithLibrary(const std::filesystem::path& file) {
  try {
    const std::string text = machine::runApart([&] {
      hive_h* hive = hivex_open(file.c_str(), 0);
      if (hive == nullptr) {
        throw std::runtime_error("refused");
      }
      const HiveContent content = LibraryWalk(hive).go();
      hivex_close(hive);
      return packed(content);
    });
    return unpacked(text);
  } catch (const machine::MachineError&) {
    return std::nullopt;
  }
}

}  // namespace zelvreg::fixture
