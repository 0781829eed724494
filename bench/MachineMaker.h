// Makes machine folders of any size with which to measure.
#ifndef ZELVREG_BENCH_MACHINE_MAKER_H
#define ZELVREG_BENCH_MACHINE_MAKER_H

#include <cstddef>
#include <cstdint>
#include <filesystem>

#include "Labels.h"

namespace zelvreg::bench {

struct MachineSize {
  std::size_t keys = 100'000;
  std::uint64_t seed = 1;
};

inline constexpr std::size_t fewestKeys = 10'000;
inline constexpr std::size_t mostKeys = 2'000'000;

// Writes registry.reg with exactly so many keys, machine.ini, and the files that the references
// which are not dead name. The same size and seed give the same bytes. `folder` must not exist, or
// be empty. Throws std::runtime_error with one line.
//
// `labels` is told of each reference that a scanner may report. What it is told follows from how
// the reference was made, never from looking.
void makeMachine(const std::filesystem::path& folder, const MachineSize& size,
                 const LabelSink& labels = {});

}  // namespace zelvreg::bench

#endif
