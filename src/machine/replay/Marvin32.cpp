#include "machine/replay/Marvin32.h"

#include <bit>
#include <cstring>

namespace zelvreg::machine {
namespace {

struct Halves {
  std::uint32_t low = 0x7A4E55C5;
  std::uint32_t high = 0x82EF4D88;

  void mix(std::uint32_t number) {
    low += number;
    high ^= low;
    low = std::rotl(low, 20) + high;
    high = std::rotl(high, 9) ^ low;
    low = std::rotl(low, 27) + high;
    high = std::rotl(high, 19);
  }
};

}  // namespace

std::uint64_t marvin32(std::span<const std::byte> bytes) {
  Halves hash;
  std::uint32_t number = 0;
  for (; bytes.size() >= sizeof number; bytes = bytes.subspan(sizeof number)) {
    std::memcpy(&number, bytes.data(), sizeof number);
    hash.mix(number);
  }
  std::uint32_t last = 0x80;
  for (std::size_t left = bytes.size(); left > 0; --left) {
    last = last << 8 | std::to_integer<std::uint32_t>(bytes[left - 1]);
  }
  hash.mix(last);
  hash.mix(0);
  return std::uint64_t{hash.high} << 32 | hash.low;
}

}  // namespace zelvreg::machine
