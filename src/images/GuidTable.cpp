#include "images/GuidTable.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "images/LittleEndian.h"
#include "machine/base/MachineError.h"

namespace zelvreg::images {
namespace {

constexpr std::size_t headerSize = 92;
constexpr std::size_t headerSumOffset = 16;
constexpr std::size_t guidSize = 16;
constexpr std::size_t smallestEntry = 128;
constexpr std::size_t largestTable = 1 << 20;
// The disk's blocks, by which a table counts, may be of either size.
constexpr std::array<std::uint64_t, 2> blockSizes{512, 4096};

// Types of partitions as their bytes stand in a table: what a dynamic disk notes of itself, and
// what it keeps.
constexpr std::array<std::string_view, 2> dynamicTypes{
    "\xAA\xC8\x08\x58\x8F\x7E\xE0\x42\x85\xD2\xE1\xE9\x04\x34\xCF\xB3",
    "\xA0\x60\x9B\xAF\x31\x14\x62\x4F\xBC\x68\x33\x11\x71\x4A\x69\xAD"};

std::uint32_t checksum(std::span<const std::byte> bytes) {
  constexpr std::uint32_t polynomial = 0xEDB88320;
  std::uint32_t sum = 0xFFFFFFFF;
  for (const std::byte byte : bytes) {
    sum ^= static_cast<std::uint32_t>(byte);
    for (int bit = 0; bit < 8; ++bit) {
      sum = sum >> 1 ^ ((sum & 1) != 0 ? polynomial : 0);
    }
  }
  return ~sum;
}

struct Table {
  std::uint64_t blockSize;
  std::size_t entrySize;
  std::vector<std::byte> entries;
};

// The table whose header is in this block, if it is whole.
std::optional<Table> tableAt(const ReadDisk& read, std::uint64_t block, std::uint64_t blockSize) {
  std::array<std::byte, headerSize> header{};
  if (!read(block * blockSize, header) || std::memcmp(header.data(), "EFI PART", 8) != 0 ||
      littleEndian<std::uint32_t>(header.data() + 12) != headerSize) {
    return std::nullopt;
  }
  const std::uint64_t sum = littleEndian<std::uint32_t>(header.data() + headerSumOffset);
  std::fill_n(header.begin() + headerSumOffset, sizeof(std::uint32_t), std::byte{0});
  const std::uint64_t entryBlock = littleEndian<std::uint64_t>(header.data() + 72);
  const std::uint64_t count = littleEndian<std::uint32_t>(header.data() + 80);
  const std::uint64_t entrySize = littleEndian<std::uint32_t>(header.data() + 84);
  if (checksum(header) != sum || entrySize < smallestEntry || count > largestTable / entrySize ||
      entryBlock > UINT64_MAX / blockSize) {
    return std::nullopt;
  }
  Table table{.blockSize = blockSize,
              .entrySize = entrySize,
              .entries = std::vector<std::byte>(count * entrySize)};
  if (!read(entryBlock * blockSize, table.entries) ||
      checksum(table.entries) != littleEndian<std::uint32_t>(header.data() + 88)) {
    return std::nullopt;
  }
  return table;
}

std::optional<Table> findTable(const ReadDisk& read, std::uint64_t diskSize) {
  for (const std::uint64_t blockSize : blockSizes) {
    const std::uint64_t blocks = diskSize / blockSize;
    for (const std::uint64_t block :
         {std::uint64_t{1}, blocks - std::min(blocks, std::uint64_t{1})}) {
      if (auto table = tableAt(read, block, blockSize)) return table;
    }
  }
  return std::nullopt;
}

// Empty for an entry that is not used, or that lies nowhere.
std::optional<Partition> partitionOf(const std::byte* entry, const Table& table) {
  const std::string_view type(reinterpret_cast<const char*>(entry), guidSize);
  const std::uint64_t first = littleEndian<std::uint64_t>(entry + 32);
  const std::uint64_t last = littleEndian<std::uint64_t>(entry + 40);
  constexpr std::uint64_t farthest = std::uint64_t{1} << 48;
  if (type.find_first_not_of('\0') == std::string_view::npos || last < first || last > farthest) {
    return std::nullopt;
  }
  Partition partition{.offset = first * table.blockSize,
                      .size = (last - first + 1) * table.blockSize};
  partition.mark = "DMIO:ID:" + std::string(type.data() + guidSize, guidSize);
  const bool isDynamic = std::ranges::find(dynamicTypes, type) != dynamicTypes.end();
  partition.content = isDynamic ? Content::Dynamic : Content::Other;
  return partition;
}

}  // namespace

std::vector<Partition> readGuidTable(const ReadDisk& read, std::uint64_t diskSize) {
  const std::optional<Table> table = findTable(read, diskSize);
  if (!table) {
    throw machine::MachineError("its partition table is damaged, and so is the backup of it");
  }
  std::vector<Partition> partitions;
  for (std::size_t offset = 0; offset < table->entries.size(); offset += table->entrySize) {
    if (auto partition = partitionOf(table->entries.data() + offset, *table)) {
      partition->number = static_cast<unsigned>(offset / table->entrySize) + 1;
      partitions.push_back(std::move(*partition));
    }
  }
  return partitions;
}

}  // namespace zelvreg::images
