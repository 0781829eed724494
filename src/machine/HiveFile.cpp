#include "machine/HiveFile.h"

#include <hivex.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <system_error>
#include <utility>

#include "machine/Machine.h"

namespace zelvreg::machine {
namespace {

// What libhivex gives is the caller's to free.
struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename Content>
using Owned = std::unique_ptr<Content, Free>;

constexpr std::size_t offsetUnit = 4;  // nodes lie at multiples of it
constexpr std::size_t listEntrySize = 4;
constexpr std::size_t valueRecordSize = 24;

// A hive may hold any number as a type, also one that libhivex's enumeration does not have.
DWORD numberOf(const hive_type& type) {
  DWORD number = 0;
  static_assert(sizeof number == sizeof type);
  std::memcpy(&number, &type, sizeof number);
  return number;
}

std::string reasonOf(int error) {
  switch (error) {
    case ENOTSUP:
    case EINVAL:
      return "it is not a registry hive, or its header is damaged";
    case HIVEX_NO_KEY:
      return "it has no root key";
    case EFAULT:
    case ELOOP:
    case ERANGE:
      return "its content is damaged";
    default:
      return std::generic_category().message(error);
  }
}

}  // namespace

HiveFile::HiveFile(std::filesystem::path hiveFile) : file(std::move(hiveFile)) {
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
  errno = 0;
  hive = hivex_open(file.c_str(), 0);
  if (hive == nullptr) {
    fail(reasonOf(errno));
  }
  errno = 0;
  const hive_node_h root = hivex_root(hive);
  if (root == 0) {
    fail(reasonOf(errno));
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

void HiveFile::subkeys(std::uint32_t node, const TakeSubkey& take) {
  if (entriesLeft == 0) {
    return;
  }
  const Owned<hive_node_h> nodes(hivex_node_children(hive, node));
  if (nodes == nullptr) {
    return;
  }
  for (const hive_node_h* next = nodes.get(); *next != 0; ++next) {
    if (!spend(entriesLeft, 1)) {
      return;
    }
    if (!firstVisit(*next)) {
      continue;
    }
    const Owned<char> name(hivex_node_name(hive, *next));
    if (name != nullptr) {
      take(name.get(), static_cast<std::uint32_t>(*next));
    }
  }
}

void HiveFile::values(std::uint32_t node, const TakeValue& take) {
  if (valuesLeft == 0 || bytesLeft == 0) {
    return;
  }
  const Owned<hive_value_h> values(hivex_node_values(hive, node));
  if (values == nullptr) {
    return;
  }
  for (const hive_value_h* next = values.get(); *next != 0; ++next) {
    if (!spend(valuesLeft, 1)) {
      return;
    }
    const Owned<char> name(hivex_value_key(hive, *next));
    hive_type type = hive_t_none;
    std::size_t size = 0;
    errno = 0;
    const Owned<char> bytes(hivex_value_value(hive, *next, &type, &size));
    // An empty value may come as null; a real failure says so in errno.
    if (name == nullptr || (bytes == nullptr && (errno != 0 || size != 0))) {
      continue;
    }
    if (!spend(bytesLeft, size)) {
      return;
    }
    take({.name = name.get(),
          .type = numberOf(type),
          .bytes = {reinterpret_cast<const std::byte*>(bytes.get()), size}});
  }
}

std::size_t HiveFile::valueCount(std::uint32_t node) const {
  return hivex_node_nr_values(hive, node);
}

}  // namespace zelvreg::machine
