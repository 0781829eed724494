#include "machine/replay/BaseBlock.h"

namespace zelvreg::machine {

using namespace hiveFormat;

// Windows writes neither 0 nor all ones.
std::uint32_t baseBlockChecksum(std::span<const std::byte> bytes) {
  std::uint32_t sum = 0;
  for (std::size_t at = 0; at < checksumOffset; at += sizeof sum) {
    sum ^= numberIn<std::uint32_t>(bytes, at);
  }
  return sum == 0 ? 1 : sum == 0xFFFFFFFF ? 0xFFFFFFFE : sum;
}

std::optional<BaseBlock> soundBaseBlock(std::span<const std::byte> bytes) {
  if (bytes.size() < baseBlockSize || !hasLetters(bytes, 0, fileKind) ||
      numberIn<std::uint32_t>(bytes, checksumOffset) != baseBlockChecksum(bytes)) {
    return std::nullopt;
  }
  return BaseBlock{.firstSequence = numberIn<std::uint32_t>(bytes, firstSequenceOffset),
                   .secondSequence = numberIn<std::uint32_t>(bytes, secondSequenceOffset),
                   .written = numberIn<std::uint64_t>(bytes, writtenOffset),
                   .type = numberIn<std::uint32_t>(bytes, fileTypeOffset),
                   .binsSize = numberIn<std::uint32_t>(bytes, binsSizeOffset),
                   .clustering = numberIn<std::uint32_t>(bytes, clusteringOffset),
                   .flags = numberIn<std::uint32_t>(bytes, flagsOffset)};
}

}  // namespace zelvreg::machine
