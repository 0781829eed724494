// The hash by which Windows knows whether an entry of a transaction log was written whole.
#ifndef ZELVREG_MACHINE_REPLAY_MARVIN32_H
#define ZELVREG_MACHINE_REPLAY_MARVIN32_H

#include <cstddef>
#include <cstdint>
#include <span>

namespace zelvreg::machine {

// With the seed that logs use.
std::uint64_t marvin32(std::span<const std::byte> bytes);

}  // namespace zelvreg::machine

#endif
