#include "machine/offline/HiveWriter.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <span>
#include <string>
#include <vector>

#include "machine/base/MachineError.h"
#include "machine/offline/HiveLibrary.h"
#include "machine/registry/Registry.h"
#include "machine/replay/BaseBlock.h"
#include "roots/NameLimits.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

[[noreturn]] void refuse(const std::string& what, int error) {
  throw MachineError(what + ": " + hiveReason(error));
}

// libhivex takes names as plain UTF-8 that ends at a NUL, and keeps them as UTF-16 or as Latin-1.
std::string hiveName(std::u16string_view name) {
  std::string narrow = utf8(name);
  if (narrow.find('\0') != std::string::npos || !isPlainUtf8(narrow)) {
    throw MachineError("the name \"" + narrow + "\" is no proper Unicode text");
  }
  return narrow;
}

bool isSameValue(std::string_view oldName, const HiveValueContent& old,
                 const RegistryValue& value) {
  return old.type == value.type && std::ranges::equal(old.bytes(), value.bytes()) &&
         utf16(oldName) == value.name();
}

// Logs with a bitmap are known by their time, and stay beside the hive: it becomes newer than all
// of them, so that nobody takes them over into it. libhivex leaves its time as it is.
void makeNewer(const std::filesystem::path& file) {
  using namespace hiveFormat;
  std::fstream stream(file, std::ios::binary | std::ios::in | std::ios::out);
  std::array<char, binsOffset + binHeader> head{};
  stream.read(head.data(), head.size());
  const std::span<std::byte> bytes = std::as_writable_bytes(std::span(head));
  const auto put = [bytes](std::size_t offset, auto number) {
    std::memcpy(&bytes[offset], &number, sizeof number);
  };
  constexpr std::size_t timeOfBin = binsOffset + binWritten;
  const std::uint64_t time = 1 + std::max(numberIn<std::uint64_t>(bytes, writtenOffset),
                                          numberIn<std::uint64_t>(bytes, timeOfBin));
  put(writtenOffset, time);
  put(timeOfBin, time);
  put(checksumOffset, baseBlockChecksum(bytes));
  if (!stream.seekp(0).write(head.data(), head.size()).flush()) {
    throw MachineError("its new content cannot be written; make room on the disk");
  }
}

// The values as libhivex takes them, with the memory that they need.
class ValueSet {
 public:
  ValueSet(const ValueList& values, bool partsLargeValues) {
    const std::size_t count = values.size();
    names.reserve(count);
    padded.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
      add(*values.at(index), partsLargeValues);
    }
  }

  [[nodiscard]] const std::vector<hive_set_value>& list() const { return entries; }

 private:
  void add(const RegistryValue& value, bool partsLargeValues) {
    names.push_back(hiveName(value.name()));
    // libhivex takes them so, and only reads them.
    char* bytes = reinterpret_cast<char*>(const_cast<std::byte*>(value.data));
    std::size_t size = value.dataSize;
    if (partsLargeValues && HiveLayout::isLarge(size)) {
      padded.emplace_back(bytes, size).resize(HiveLayout::sizeInOneCell(size));
      bytes = padded.back().data();
      size = padded.back().size();
    }
    entries.push_back({names.back().data(), hive_t_none, size, bytes});
    setType(entries.back(), value.type);
  }

  std::vector<std::string> names;
  std::vector<std::string> padded;
  std::vector<hive_set_value> entries;
};

}  // namespace

HiveWriter::HiveWriter(const std::filesystem::path& file)
    : hive(hivex_open(file.c_str(), HIVEX_OPEN_WRITE)) {
  if (hive == nullptr) {
    refuse("it cannot be read", errno);
  }
  try {
    partsLargeValues = HiveLayout::hasPartsOfLargeValues(file);
  } catch (const MachineError&) {
    hivex_close(hive);
    throw;
  }
}

HiveWriter::~HiveWriter() { hivex_close(hive); }

void HiveWriter::eraseKey(std::uint32_t node) {
  errno = 0;
  if (hivex_node_delete_child(hive, node) != 0) {
    // libhivex looks at each name that goes, and an open hive has a sound header.
    if (errno == EILSEQ || errno == EINVAL) {
      throw MachineError("a name of it or below it is no proper Unicode text");
    }
    refuse("it cannot be deleted", errno);
  }
}

std::uint32_t HiveWriter::addKey(std::uint32_t parent, std::u16string_view name) {
  const std::string narrow = hiveName(name);
  errno = 0;
  const hive_node_h node = hivex_node_add_child(hive, parent, narrow.c_str());
  if (node == 0) {
    refuse("it cannot be added", errno);
  }
  layout.noteNewSubkey(parent);
  return static_cast<std::uint32_t>(node);
}

bool HiveWriter::hasJust(std::uint32_t node, const ValueList& values) const {
  const HiveOwned<hive_value_h> old(hivex_node_values(hive, node));
  bool isSame = true;
  std::size_t count = 0;
  for (const hive_value_h* next = old.get(); next != nullptr && *next != 0; ++next, ++count) {
    const HiveOwned<char> nameText(hivex_value_key(hive, *next));
    const std::string_view name = nameText == nullptr ? "" : nameText.get();
    const std::optional<HiveValueContent> content = readHiveValue(hive, *next);
    const bool isWhole = content && nameText != nullptr &&
                         name.size() == hivex_value_key_len(hive, *next) &&
                         utf16(name).size() <= longestValueName;
    if (!isWhole) {
      throw MachineError("another value of it cannot be read and would be lost");
    }
    const RegistryValue* value = values.at(count);
    isSame = isSame && value != nullptr && isSameValue(name, *content, *value);
  }
  if (old == nullptr || count != hivex_node_nr_values(hive, node)) {
    throw MachineError("its list of values is damaged");
  }
  return isSame && count == values.size();
}

bool HiveWriter::setValues(std::uint32_t node, const ValueList& values) {
  if (hasJust(node, values)) {
    return false;
  }
  const ValueSet given(values, partsLargeValues);
  errno = 0;
  if (hivex_node_set_values(hive, node, given.list().size(), given.list().data(), 0) != 0) {
    refuse("its values cannot be set", errno);
  }
  const HiveOwned<hive_value_h> written(hivex_node_values(hive, node));
  for (std::size_t index = 0; written != nullptr && index < values.size(); ++index) {
    const std::size_t size = values.at(index)->dataSize;
    if (partsLargeValues && HiveLayout::isLarge(size)) {
      layout.noteLargeValue(node, written.get()[index], size);
    }
  }
  return true;
}

void HiveWriter::write(const std::filesystem::path& file) {
  errno = 0;
  if (hivex_commit(hive, file.c_str(), 0) != 0) {
    refuse("it cannot be written", errno);
  }
  layout.apply(file);
  makeNewer(file);
}

}  // namespace zelvreg::machine
