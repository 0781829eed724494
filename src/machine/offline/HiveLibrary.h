// What the writer of hive files needs of libhivex. It is included by the writer alone.
#ifndef ZELVREG_MACHINE_OFFLINE_HIVE_LIBRARY_H
#define ZELVREG_MACHINE_OFFLINE_HIVE_LIBRARY_H

#include <hivex.h>
#include <windows.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zelvreg::machine {

struct FreeMemory {
  void operator()(void* memory) const { std::free(memory); }
};
// What libhivex gives is the caller's to free.
template <typename Content>
using HiveOwned = std::unique_ptr<Content, FreeMemory>;

// A hive may hold any number as a type, also one that libhivex's enumeration does not have.
DWORD numberOf(const hive_type& type);
void setType(hive_set_value& value, DWORD number);

// What a value holds, with its own memory.
struct HiveValueContent {
  DWORD type = 0;
  HiveOwned<char> data;
  std::size_t size = 0;

  [[nodiscard]] std::span<const std::byte> bytes() const {
    return {reinterpret_cast<const std::byte*>(data.get()), size};
  }
};

// None if it cannot be read.
std::optional<HiveValueContent> readHiveValue(hive_h* hive, hive_value_h value);

// What an error number of libhivex means for a file.
std::string hiveReason(int error);

}  // namespace zelvreg::machine

#endif
