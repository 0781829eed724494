#include "machine/offline/HiveLibrary.h"

#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

namespace zelvreg::machine {

DWORD numberOf(const hive_type& type) {
  DWORD number = 0;
  static_assert(sizeof number == sizeof type);
  std::memcpy(&number, &type, sizeof number);
  return number;
}

void setType(hive_set_value& value, DWORD number) { std::memcpy(&value.t, &number, sizeof number); }

std::optional<HiveValueContent> readHiveValue(hive_h* hive, hive_value_h value) {
  hive_type type = hive_t_none;
  std::size_t size = 0;
  errno = 0;
  HiveOwned<char> bytes(hivex_value_value(hive, value, &type, &size));
  // An empty value may come as null; a real failure says so in errno.
  if (bytes == nullptr && (errno != 0 || size != 0)) {
    return std::nullopt;
  }
  return HiveValueContent{numberOf(type), std::move(bytes), size};
}

std::string hiveReason(int error) {
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

}  // namespace zelvreg::machine
