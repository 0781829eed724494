// The base block: the first 512 bytes of a hive, of which each of its transaction logs begins with
// a copy. docs/hive-format.md names the sources.
#ifndef ZELVREG_MACHINE_REPLAY_BASE_BLOCK_H
#define ZELVREG_MACHINE_REPLAY_BASE_BLOCK_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

namespace zelvreg::machine {

namespace hiveFormat {

inline constexpr std::string_view fileKind = "regf";
inline constexpr std::size_t firstSequenceOffset = 4;   // raised before Windows writes
inline constexpr std::size_t secondSequenceOffset = 8;  // raised after it has written
inline constexpr std::size_t writtenOffset = 0xC;       // when
inline constexpr std::size_t majorVersionOffset = 0x14;
inline constexpr std::uint32_t majorVersion = 1;
inline constexpr std::size_t minorVersionOffset = 0x18;
inline constexpr std::size_t fileTypeOffset = 0x1C;
inline constexpr std::size_t rootOffset = 0x24;
inline constexpr std::size_t binsSizeOffset = 0x28;
inline constexpr std::size_t clusteringOffset = 0x2C;
inline constexpr std::size_t flagsOffset = 0x90;
inline constexpr std::uint32_t transactionsFlag = 1;
inline constexpr std::size_t checksumOffset = 0x1FC;
inline constexpr std::size_t baseBlockSize = 0x200;
inline constexpr std::size_t pageSize = 0x1000;
inline constexpr std::size_t binsOffset = 0x1000;  // what links count from
inline constexpr std::string_view binKind = "hbin";
inline constexpr std::size_t binPlace = 4;  // its own link
inline constexpr std::size_t binSize = 8;
inline constexpr std::size_t binWritten = 0x14;  // of the first bin
inline constexpr std::size_t binHeader = 0x20;   // its size

}  // namespace hiveFormat

// The caller has made sure that it lies in the bytes.
template <typename Number>
Number numberIn(std::span<const std::byte> bytes, std::size_t offset) {
  Number number{};
  std::memcpy(&number, bytes.data() + offset, sizeof number);
  return number;
}
inline bool hasLetters(std::span<const std::byte> bytes, std::size_t offset,
                       std::string_view letters) {
  return std::memcmp(bytes.data() + offset, letters.data(), letters.size()) == 0;
}

// What the checksum of these bytes must be, at least all before it.
std::uint32_t baseBlockChecksum(std::span<const std::byte> bytes);

struct BaseBlock {
  enum class Type : std::uint32_t { Hive = 0, OldLog = 1, OlderLog = 2, NewLog = 6 };

  std::uint32_t firstSequence = 0;
  std::uint32_t secondSequence = 0;
  std::uint64_t written = 0;
  std::uint32_t type = 0;  // a Type, or anything else
  std::uint32_t binsSize = 0;
  std::uint32_t clustering = 0;
  std::uint32_t flags = 0;

  [[nodiscard]] bool isOf(Type wanted) const { return type == static_cast<std::uint32_t>(wanted); }
};

// None if no base block with a true checksum begins there.
std::optional<BaseBlock> soundBaseBlock(std::span<const std::byte> bytes);

// Sequence numbers wrap, so that the one after the highest is 0.
inline bool isBefore(std::uint32_t sequence, std::uint32_t other) {
  return static_cast<std::int32_t>(sequence - other) < 0;
}

}  // namespace zelvreg::machine

#endif
