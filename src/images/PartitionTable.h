// Where the partitions of a disk lie, and what is in them. The table is somebody else's: whatever
// it says, no more than its own few sectors are read.
#ifndef ZELVREG_IMAGES_PARTITION_TABLE_H
#define ZELVREG_IMAGES_PARTITION_TABLE_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace zelvreg::images {

// Fills the bytes with those of a disk from an offset on; false if they are not all there.
using ReadDisk = std::function<bool(std::uint64_t offset, std::span<std::byte> bytes)>;

enum class Content : std::uint8_t {
  Ntfs,
  BitLocker,
  Dynamic,  // part of a dynamic disk, whose volumes only Windows puts together
  Other,
};

struct Partition {
  unsigned number = 0;  // from 1, as the tools of Linux count; logical ones of an MBR from 5
  std::uint64_t offset = 0;
  std::uint64_t size = 0;  // in bytes; of what is on the disk
  bool isCut = false;      // the table says that it goes on behind the end of the disk
  Content content = Content::Other;
  // The data by which a MountedDevices value means this partition; empty if none can.
  std::string mark = {};
};

// The partitions by number, at most 128. A disk that is one volume without a table has that alone,
// as number 1. Throws MachineError, which says only what is wrong, if a table is there and damaged.
std::vector<Partition> readPartitions(const ReadDisk& read, std::uint64_t diskSize);

}  // namespace zelvreg::images

#endif
