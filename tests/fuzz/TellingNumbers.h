// Numbers at which sums and signs turn, and where a record of a hive begins or ends: worth a try
// wherever four bytes may be an offset or a size.
#ifndef ZELVREG_TESTS_FUZZ_TELLING_NUMBERS_H
#define ZELVREG_TESTS_FUZZ_TELLING_NUMBERS_H

#include <array>
#include <cstdint>

namespace zelvreg::fuzz {

inline constexpr std::array<std::uint32_t, 16> tellingNumbers{
    0,      1,      8,          0x20,       0x200,      0x1000,     0x2000,     0x7FFFF000,
    0xFFFF, 0x1001, 0x80000000, 0xFFFFF000, 0xFFFFFFFF, 0x7FFFFFFF, 0x40000000, 0xFFFFFFF8};

}  // namespace zelvreg::fuzz

#endif
