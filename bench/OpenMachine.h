// A machine folder, opened as the program opens it.
#ifndef ZELVREG_BENCH_OPEN_MACHINE_H
#define ZELVREG_BENCH_OPEN_MACHINE_H

#include <filesystem>
#include <memory>

#include "console/Computer.h"

namespace zelvreg::bench {

// In force until it is gone. Throws std::runtime_error with one line.
inline std::unique_ptr<console::Computer> openMachine(const std::filesystem::path& folder) {
  return console::Computer::open({.machineFolder = folder.string(),
                                  .offlineRoot = {},
                                  .drives = {},
                                  .user = {},
                                  .missingDrivesAreDead = false});
}

}  // namespace zelvreg::bench

#endif
