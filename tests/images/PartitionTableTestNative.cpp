// Partition tables that nobody wrote for an honest reader; the Windows program reads none.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "images/PartitionTable.h"
#include "machine/base/MachineError.h"

namespace zelvreg::images {
namespace {

constexpr std::size_t sector = 512;

struct Disk {
  std::string bytes;
  std::uint64_t size = bytes.size();  // what is behind the bytes is zero
  std::size_t reads = 0;

  std::vector<Partition> partitions() {
    return readPartitions(
        [this](std::uint64_t offset, std::span<std::byte> wanted) {
          ++reads;
          if (offset > size || wanted.size() > size - offset) return false;
          std::fill(wanted.begin(), wanted.end(), std::byte{0});
          if (offset < bytes.size()) {
            std::memcpy(wanted.data(), bytes.data() + offset,
                        std::min<std::size_t>(wanted.size(), bytes.size() - offset));
          }
          return true;
        },
        size);
  }

  void entry(std::size_t at, std::size_t index, unsigned char type, std::uint32_t start,
             std::uint32_t count) {
    char* place = bytes.data() + at + 446 + 16 * index;
    place[4] = static_cast<char>(type);
    std::memcpy(place + 8, &start, sizeof start);
    std::memcpy(place + 12, &count, sizeof count);
    bytes.replace(at + 510, 2, "\x55\xAA");
  }
};

Disk emptyDisk(std::size_t sectors) { return {.bytes = std::string(sectors * sector, '\0')}; }

TEST(PartitionTable, ADiskWithoutATableHasNoPartition) {
  EXPECT_TRUE(emptyDisk(8).partitions().empty());
  EXPECT_TRUE(emptyDisk(0).partitions().empty());
}

TEST(PartitionTable, AVolumeWithoutATableIsTheFirstPartition) {
  Disk disk = emptyDisk(8);
  disk.bytes.replace(3, 8, "NTFS    ");
  const auto partitions = disk.partitions();
  ASSERT_EQ(partitions.size(), 1U);
  EXPECT_EQ(partitions[0].number, 1U);
  EXPECT_EQ(partitions[0].size, 8 * sector);
  EXPECT_EQ(partitions[0].content, Content::Ntfs);
  EXPECT_EQ(partitions[0].mark, "");
}

TEST(PartitionTable, APartitionBehindTheEndIsCut) {
  Disk disk = emptyDisk(8);
  disk.entry(0, 0, 7, 4, 8);
  disk.entry(0, 1, 7, 0xFFFFFFFF, 0xFFFFFFFF);
  disk.entry(0, 2, 7, 2, 2);
  const auto partitions = disk.partitions();
  ASSERT_EQ(partitions.size(), 3U);
  EXPECT_TRUE(partitions[0].isCut);
  EXPECT_EQ(partitions[0].size, 4 * sector);
  EXPECT_TRUE(partitions[1].isCut);
  EXPECT_EQ(partitions[1].size, 0U);
  EXPECT_FALSE(partitions[2].isCut);
}

TEST(PartitionTable, LogicalPartitionsInACircleEnd) {
  Disk disk = emptyDisk(16);
  disk.entry(0, 0, 5, 4, 12);
  disk.entry(4 * sector, 0, 7, 1, 1);
  disk.entry(4 * sector, 1, 5, 2, 2);
  disk.entry(6 * sector, 0, 7, 1, 1);
  disk.entry(6 * sector, 1, 5, 0, 2);
  const auto partitions = disk.partitions();
  ASSERT_EQ(partitions.size(), 2U);
  EXPECT_EQ(partitions[0].number, 5U);
  EXPECT_EQ(partitions[0].offset, 5 * sector);
  EXPECT_EQ(partitions[1].number, 6U);
  EXPECT_EQ(partitions[1].offset, 7 * sector);
}

TEST(PartitionTable, WithAGuidTypeAndNoGuidTableItIsDamaged) {
  Disk disk = emptyDisk(64);
  disk.entry(0, 0, 0xEE, 1, 63);
  EXPECT_THROW(disk.partitions(), machine::MachineError);
}

TEST(PartitionTable, RandomTablesAreReadInBounds) {
  std::minstd_rand random(1);
  const auto below = [&random](std::uint32_t bound) {
    return static_cast<std::uint32_t>(random() % bound);
  };
  for (int turn = 0; turn < 2000; ++turn) {
    Disk disk = emptyDisk(16);
    for (std::size_t at = 0; at < disk.bytes.size(); at += sector) {
      for (std::size_t index = 0; index < 4; ++index) {
        constexpr unsigned char types[]{0, 5, 7, 0x0F, 0x42};
        disk.entry(at, index, types[below(5)], below(20), below(20));
      }
    }
    disk.size = below(2) == 0 ? disk.size : std::uint64_t{below(1U << 31)} << 20;
    for (const Partition& partition : disk.partitions()) {
      EXPECT_LE(partition.offset + partition.size, std::max(disk.size, partition.offset));
      EXPECT_GT(partition.number, 0U);
    }
    EXPECT_LT(disk.reads, 1000U);
  }
}

}  // namespace
}  // namespace zelvreg::images
