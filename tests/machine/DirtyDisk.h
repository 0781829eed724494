// Makes a hive on a disk one that Windows did not shut down cleanly: it is as it was, and its logs
// have what it is to be.
#ifndef ZELVREG_TESTS_MACHINE_DIRTY_DISK_H
#define ZELVREG_TESTS_MACHINE_DIRTY_DISK_H

#include <string>

#include "LogMaker.h"
#include "machine/TemporaryFolder.h"

namespace zelvreg::fixture {

// The number at which the hive was stopped.
inline constexpr std::uint32_t stoppedAt = 10;

// Puts both contents on the disk: the one in the hive, the other in its first log, as one entry.
inline void makeDirty(const TemporaryFolder& disk, const std::string& name, std::string inFile,
                      const std::string& inLogs) {
  const std::string head = bench::newLogHead(inLogs, stoppedAt);
  disk.write(name + ".LOG1",
             head + bench::entryBytes({.sequence = stoppedAt,
                                       .flags = bench::wordAt(inLogs, 144) & 1U,
                                       .binsSize = bench::wordAt(inLogs, 40),
                                       .pages = bench::changedPages(inFile, inLogs, 4096)}));
  disk.write(name + ".LOG2", "");
  bench::setSequences(inFile, stoppedAt + 1, stoppedAt);
  disk.write(name, inFile);
}

}  // namespace zelvreg::fixture

#endif
