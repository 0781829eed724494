#include "machine/hive/HiveNames.h"

#include <bit>

#include "machine/base/PlainFile.h"
#include "machine/hive/HiveBytes.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {

using namespace hiveFormat;

std::optional<std::string> HiveNames::ofKey(std::size_t node) const {
  return read(
      node,
      {.name = keyName, .length = keyNameLength, .flags = keyFlags, .narrowFlag = narrowNameFlag});
}

std::optional<std::string> HiveNames::ofValue(std::size_t record) const {
  return read(record, {.name = valueName,
                       .length = valueNameLength,
                       .flags = valueFlags,
                       .narrowFlag = narrowValueNameFlag});
}

std::optional<std::string> HiveNames::read(std::size_t cell, const Layout& layout) const {
  static_assert(std::endian::native == std::endian::little, "names are UTF-16LE");
  std::uint16_t flags = 0;
  std::uint16_t length = 0;
  const bool isThere = readAt(file, cell + layout.flags, &flags, sizeof flags) == sizeof flags &&
                       readAt(file, cell + layout.length, &length, sizeof length) == sizeof length;
  if (!isThere || (flags & layout.narrowFlag) != 0 || length % sizeof(char16_t) != 0) {
    return std::nullopt;
  }
  std::u16string units(length / sizeof(char16_t), u'\0');
  if (readAt(file, cell + layout.name, units.data(), length) != length) {
    return std::nullopt;
  }
  std::string name = utf8(units);
  return isPlainUtf8(name) ? std::nullopt : std::optional(std::move(name));
}

}  // namespace zelvreg::machine
