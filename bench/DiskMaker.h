// Makes a disk with a large hive, so that reading hives can be measured without anybody else's
// data.
#ifndef ZELVREG_BENCH_DISK_MAKER_H
#define ZELVREG_BENCH_DISK_MAKER_H

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace zelvreg::bench {

// A hive of more than 64 MB, most of it records of interfaces, which no scanner reads: as it is on
// a computer with much software.
struct DiskSize {
  std::size_t machineKeys = 40'000;
  std::size_t interfaces = 56'000;
  std::uint64_t seed = 1;
};

// Makes a disk that holds nothing but one hive: HKEY_LOCAL_MACHINE\SOFTWARE of a made machine, with
// more interfaces. Gives the hive file. Throws as makeMachine and makeHive do.
std::filesystem::path makeDisk(const std::filesystem::path& folder, const DiskSize& size);

}  // namespace zelvreg::bench

#endif
