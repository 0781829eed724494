#include "machine/hive/HiveFile.h"

#include <cerrno>
#include <limits>
#include <system_error>
#include <utility>

#include "machine/base/MachineError.h"
#include "machine/hive/HiveCheck.h"
#include "machine/hive/HiveLibrary.h"

namespace zelvreg::machine {
namespace {

constexpr std::size_t offsetUnit = 4;  // nodes lie at multiples of it
constexpr std::size_t listEntrySize = 4;
constexpr std::size_t valueRecordSize = 24;

}  // namespace

HiveFile::HiveFile(std::filesystem::path hiveFile)
    : file(std::move(hiveFile)), names(openPlainFile(file)) {
  const auto fail = [this](const std::string& reason) {
    if (hive != nullptr) {
      hivex_close(hive);
    }
    throw MachineError(file.string() + ": cannot be read as a registry hive: " + reason);
  };
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored)) {
    fail("it is not a file");
  }
  const std::uintmax_t size = std::filesystem::file_size(file, ignored);
  if (size > std::numeric_limits<std::uint32_t>::max()) {
    fail("it is larger than a hive can be");
  }
  // Before it is read, so that another file in its place is never taken for this one.
  readStamp = stampOf(file);
  try {
    checkHiveHeader(openPlainFile(file));
  } catch (const MachineError& error) {
    fail(error.what());
  }
  errno = 0;
  hive = hivex_open(file.c_str(), 0);
  if (hive == nullptr) {
    fail(hiveReason(errno));
  }
  errno = 0;
  const hive_node_h root = hivex_root(hive);
  if (root == 0) {
    fail(hiveReason(errno));
  }
  rootNode = static_cast<std::uint32_t>(root);
  visited.resize(static_cast<std::size_t>(size) / offsetUnit + 1);
  visited[root / offsetUnit] = true;
  entriesLeft = static_cast<std::size_t>(size) / listEntrySize;
  valuesLeft = static_cast<std::size_t>(size) / (listEntrySize + valueRecordSize);
  bytesLeft = static_cast<std::size_t>(size);
}

HiveFile::~HiveFile() {
  if (hive != nullptr) {
    hivex_close(hive);
  }
}

bool HiveFile::firstVisit(std::size_t offset) {
  const std::size_t unit = offset / offsetUnit;
  if (unit >= visited.size() || visited[unit]) {
    return false;
  }
  visited[unit] = true;
  return true;
}

bool HiveFile::spend(std::size_t& budget, std::size_t amount) {
  if (amount > budget) {
    budget = 0;
    return false;
  }
  budget -= amount;
  return true;
}

bool HiveFile::subkeys(std::uint32_t node, const TakeSubkey& take) {
  const HiveOwned<hive_node_h> nodes(hivex_node_children(hive, node));
  bool isWhole = nodes != nullptr;
  for (const hive_node_h* next = nodes.get(); nodes != nullptr && *next != 0; ++next) {
    if (!spend(entriesLeft, 1)) {
      return false;
    }
    const bool isNew = firstVisit(*next);
    const HiveOwned<char> name(isNew ? hivex_node_name(hive, *next) : nullptr);
    const auto odd = isNew && name == nullptr ? names.ofKey(*next) : std::nullopt;
    if (name == nullptr && !odd) {
      isWhole = false;
      continue;
    }
    take(odd ? std::string_view(*odd) : name.get(), static_cast<std::uint32_t>(*next));
  }
  return isWhole;
}

bool HiveFile::values(std::uint32_t node, const TakeValue& take) {
  const HiveOwned<hive_value_h> values(hivex_node_values(hive, node));
  bool isWhole = values != nullptr;
  for (const hive_value_h* next = values.get(); next != nullptr && *next != 0; ++next) {
    if (!spend(valuesLeft, 1)) {
      return false;
    }
    const HiveOwned<char> name(hivex_value_key(hive, *next));
    const auto odd = name == nullptr ? names.ofValue(*next) : std::nullopt;
    const bool hasName = name != nullptr || odd;
    const auto value = hasName ? readHiveValue(hive, *next) : std::nullopt;
    if (!value) {
      isWhole = false;
      continue;
    }
    if (!spend(bytesLeft, value->size)) {
      return false;
    }
    take({.name = odd ? std::string_view(*odd) : name.get(),
          .type = value->type,
          .bytes = value->bytes()});
  }
  return isWhole;
}

void HiveFile::noteDamage(std::string line) {
  constexpr std::size_t mostLines = 10;
  if (damageLines.size() < mostLines) {
    damageLines.push_back(file.string() + ": " + line.append("; it is damaged there"));
  }
}

std::size_t HiveFile::valueCount(std::uint32_t node) const {
  return hivex_node_nr_values(hive, node);
}

}  // namespace zelvreg::machine
