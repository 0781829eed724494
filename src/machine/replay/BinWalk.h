// Whether the bins of a hive follow each other from the first to the last.
#ifndef ZELVREG_MACHINE_REPLAY_BIN_WALK_H
#define ZELVREG_MACHINE_REPLAY_BIN_WALK_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace zelvreg::machine {

// The place in the file of the first bin that is not as it must be; none if all are. The header of
// the file must lie in the bytes; the bins need not.
std::optional<std::uint64_t> firstBadBin(std::span<const std::byte> hive);

}  // namespace zelvreg::machine

#endif
