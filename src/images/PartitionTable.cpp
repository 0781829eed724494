#include "images/PartitionTable.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string_view>

#include "images/GuidTable.h"
#include "images/LittleEndian.h"

namespace zelvreg::images {
namespace {

constexpr std::uint64_t sectorSize = 512;
constexpr std::size_t mostPartitions = 128;
using Sector = std::array<std::byte, sectorSize>;

constexpr std::uint8_t dynamicType = 0x42;
constexpr std::uint8_t guidTableType = 0xEE;

struct MasterEntry {
  std::uint8_t type;
  std::uint64_t start;  // in bytes
  std::uint64_t size;
};

bool isExtended(std::uint8_t type) { return type == 0x05 || type == 0x0F || type == 0x85; }

bool hasName(const Sector& sector, std::string_view name) {
  constexpr std::size_t nameOffset = 3;
  return std::memcmp(sector.data() + nameOffset, name.data(), name.size()) == 0;
}

bool hasTable(const Sector& sector) {
  return sector[510] == std::byte{0x55} && sector[511] == std::byte{0xAA};
}

MasterEntry entryOf(const Sector& sector, std::size_t index) {
  constexpr std::size_t tableOffset = 446;
  constexpr std::size_t entrySize = 16;
  const std::byte* entry = sector.data() + tableOffset + index * entrySize;
  return {.type = static_cast<std::uint8_t>(entry[4]),
          .start = littleEndian<std::uint32_t>(entry + 8) * sectorSize,
          .size = littleEndian<std::uint32_t>(entry + 12) * sectorSize};
}

constexpr std::size_t entriesOfSector = 4;

class Reader {
 public:
  Reader(const ReadDisk& readDisk, std::uint64_t sizeOfDisk)
      : read(readDisk), diskSize(sizeOfDisk) {}

  std::vector<Partition> partitions() {
    Sector first{};
    if (!read(0, first)) return {};
    if (contentAt(0) != Content::Other) {
      add({.number = 1, .offset = 0, .size = diskSize});
    } else if (hasTable(first)) {
      readTable(first);
    }
    return std::move(found);
  }

 private:
  void readTable(const Sector& first) {
    for (std::size_t index = 0; index < entriesOfSector; ++index) {
      if (entryOf(first, index).type == guidTableType) {
        for (Partition& partition : readGuidTable(read, diskSize)) add(std::move(partition));
        return;
      }
    }
    readMaster(first);
  }

  void readMaster(const Sector& first) {
    constexpr std::size_t signatureOffset = 440;
    constexpr std::size_t signatureSize = 4;
    signature.assign(reinterpret_cast<const char*>(first.data()) + signatureOffset, signatureSize);
    std::optional<MasterEntry> extended;
    for (std::size_t index = 0; index < entriesOfSector; ++index) {
      const MasterEntry entry = entryOf(first, index);
      if (isExtended(entry.type)) {
        extended = extended ? extended : entry;
      } else {
        addMaster(static_cast<unsigned>(index) + 1, entry);
      }
    }
    if (extended) {
      readLogical(*extended);
    }
  }

  // Each record of an extended partition names one logical partition and the next record.
  void readLogical(const MasterEntry& extended) {
    constexpr unsigned firstLogical = 5;
    std::uint64_t record = extended.start;
    for (unsigned count = 0; count < mostPartitions; ++count) {
      Sector sector{};
      if (!read(record, sector) || !hasTable(sector)) return;
      MasterEntry logical = entryOf(sector, 0);
      logical.start += record;
      addMaster(firstLogical + count, logical);
      const MasterEntry next = entryOf(sector, 1);
      // Records follow each other upwards, so a chain in a circle ends here.
      if (!isExtended(next.type) || extended.start + next.start <= record) return;
      record = extended.start + next.start;
    }
  }

  void addMaster(unsigned number, const MasterEntry& entry) {
    if (entry.type == 0) return;
    Partition partition{.number = number, .offset = entry.start, .size = entry.size};
    partition.mark = signature;
    appendLittleEndian(partition.mark, entry.start);
    partition.content = entry.type == dynamicType ? Content::Dynamic : Content::Other;
    add(std::move(partition));
  }

  void add(Partition partition) {
    if (partition.size == 0 || found.size() == mostPartitions) return;
    partition.isCut = partition.offset >= diskSize || partition.size > diskSize - partition.offset;
    if (partition.isCut) {
      partition.size = diskSize - std::min(partition.offset, diskSize);
    }
    if (partition.content == Content::Other) {
      partition.content = contentAt(partition.offset);
    }
    found.push_back(std::move(partition));
  }

  [[nodiscard]] Content contentAt(std::uint64_t offset) const {
    Sector sector{};
    if (!read(offset, sector)) return Content::Other;
    if (hasName(sector, "NTFS    ")) return Content::Ntfs;
    return hasName(sector, "-FVE-FS-") ? Content::BitLocker : Content::Other;
  }

  const ReadDisk& read;
  std::uint64_t diskSize;
  std::string signature;
  std::vector<Partition> found;
};

}  // namespace

std::vector<Partition> readPartitions(const ReadDisk& read, std::uint64_t diskSize) {
  return Reader(read, diskSize).partitions();
}

}  // namespace zelvreg::images
