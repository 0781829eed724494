// The bytes of a hive file, and where in them each thing is; docs/hive-format.md names the sources.
// Offsets are those in the file; a link is an offset that counts from the first bin.
#ifndef ZELVREG_MACHINE_HIVE_HIVE_BYTES_H
#define ZELVREG_MACHINE_HIVE_HIVE_BYTES_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "machine/base/MachineError.h"
#include "machine/replay/BaseBlock.h"

namespace zelvreg::machine {

namespace hiveFormat {

inline constexpr std::uint32_t firstVersionWithParts = 4;
inline constexpr std::uint32_t firstVersionWithHashes = 5;
inline constexpr std::uint32_t noLink = 0xFFFFFFFF;
inline constexpr std::size_t cellHeader = 4;  // its size, negative while it is in use
inline constexpr std::size_t cellKind = 4;    // two letters, in most cells
inline constexpr std::size_t cellUnit = 8;    // cells begin and end at multiples of it

// In a key's cell.
inline constexpr std::size_t keyFlags = 6;
inline constexpr std::uint16_t narrowNameFlag = 0x20;
inline constexpr std::size_t keyParent = 0x14;
inline constexpr std::size_t subkeyCount = 0x18;
inline constexpr std::size_t subkeyList = 0x20;
inline constexpr std::size_t valueCount = 0x28;
inline constexpr std::size_t valueList = 0x2C;
inline constexpr std::size_t keySecurity = 0x30;
inline constexpr std::size_t keyClass = 0x34;
inline constexpr std::size_t keyNameLength = 0x4C;
inline constexpr std::size_t keyClassLength = 0x4E;
inline constexpr std::size_t keyName = 0x50;
// In the cell of a list of subkeys.
inline constexpr std::size_t listKind = 4;
inline constexpr std::size_t listCount = 6;
inline constexpr std::size_t listEntries = 8;
// In the cell of a security record.
inline constexpr std::size_t securityUses = 0x10;
// In a value's record.
inline constexpr std::size_t valueNameLength = 6;
inline constexpr std::size_t valueSize = 8;
inline constexpr std::uint32_t sizeOfDataInLink = 0x80000000;
inline constexpr std::size_t largestDataInLink = 4;
inline constexpr std::size_t valueData = 12;
inline constexpr std::size_t valueType = 16;
inline constexpr std::size_t valueFlags = 0x14;
inline constexpr std::uint16_t narrowValueNameFlag = 1;
inline constexpr std::size_t valueName = 0x18;

inline constexpr std::size_t partSize = 16344;
inline constexpr std::size_t partsRecordCell = 16;  // "db", the count, the list's link

}  // namespace hiveFormat

// What lies beyond the end of the bytes is damage: MachineError.
class HiveBytes {
 public:
  explicit HiveBytes(std::string content) : bytes(std::move(content)) {}

  template <typename Number>
  [[nodiscard]] Number get(std::size_t offset) const {
    Number number{};
    std::memcpy(&number, range(offset, sizeof number), sizeof number);
    return number;
  }
  // Where an offset of the hive leads to in the file.
  [[nodiscard]] std::size_t follow(std::size_t offset) const {
    return hiveFormat::binsOffset + get<std::uint32_t>(offset);
  }
  [[nodiscard]] std::string_view text(std::size_t offset, std::size_t size) const {
    return {range(offset, size), size};
  }

  template <typename Number>
  void put(std::size_t offset, std::type_identity_t<Number> number) {
    write(offset, {reinterpret_cast<const char*>(&number), sizeof number});
  }
  // An offset of the hive that leads to a place in the file.
  void putLink(std::size_t offset, std::size_t place) {
    put<std::uint32_t>(offset, static_cast<std::uint32_t>(place - hiveFormat::binsOffset));
  }
  void putCell(std::size_t offset, std::size_t size) {
    put<std::int32_t>(offset, -static_cast<std::int32_t>(size));
  }
  void write(std::size_t offset, std::string_view content) {
    static_cast<void>(range(offset, content.size()));
    std::copy(content.begin(), content.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
  }

  // The name of the key in this cell.
  [[nodiscard]] std::u16string keyNameAt(std::size_t node) const;

  [[nodiscard]] const std::string& all() const { return bytes; }

 private:
  [[nodiscard]] const char* range(std::size_t offset, std::size_t size) const {
    if (offset > bytes.size() || size > bytes.size() - offset) {
      throw MachineError("its content is damaged");
    }
    return bytes.data() + offset;
  }

  std::string bytes;
};

}  // namespace zelvreg::machine

#endif
