// Makes a large hive file, and a disk with it, so that reading hives can be measured without
// anybody else's data.
#ifndef ZELVREG_BENCH_HIVE_MAKER_H
#define ZELVREG_BENCH_HIVE_MAKER_H

#include <filesystem>

#include "machine/registry/Registry.h"

namespace zelvreg::bench {

// Writes a key with all below it as a hive whose root key it is; built-in links are left out. The
// file is laid out as Windows does it, without gaps, in the order of the tree. Throws
// std::runtime_error with one line when it cannot be written, or if a value has more data than fit
// into one cell.
void makeHive(const std::filesystem::path& file, machine::Registry& registry,
              machine::RegistryKey& root);

}  // namespace zelvreg::bench

#endif
