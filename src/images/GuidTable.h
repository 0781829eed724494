// The GUID partition table of a disk.
#ifndef ZELVREG_IMAGES_GUID_TABLE_H
#define ZELVREG_IMAGES_GUID_TABLE_H

#include <cstdint>
#include <vector>

#include "images/PartitionTable.h"

namespace zelvreg::images {

// Its partitions with their numbers, places and marks; which of them belong to a dynamic disk is
// told, the rest of their content is not. The backup at the end of the disk stands in for a damaged
// table. Throws MachineError, which says only what is wrong, if both are.
std::vector<Partition> readGuidTable(const ReadDisk& read, std::uint64_t diskSize);

}  // namespace zelvreg::images

#endif
