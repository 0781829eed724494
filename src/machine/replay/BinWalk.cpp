#include "machine/replay/BinWalk.h"

#include "machine/replay/BaseBlock.h"

namespace zelvreg::machine {

using namespace hiveFormat;

std::optional<std::uint64_t> firstBadBin(std::span<const std::byte> hive) {
  const std::uint64_t end =
      binsOffset + std::uint64_t{numberIn<std::uint32_t>(hive, binsSizeOffset)};
  std::uint64_t bin = binsOffset;
  while (bin < end) {
    if (end > hive.size() || end - bin < binHeader) {
      return bin;
    }
    const std::uint64_t size = numberIn<std::uint32_t>(hive, bin + binSize);
    if (!hasLetters(hive, bin, binKind) ||
        numberIn<std::uint32_t>(hive, bin + binPlace) != bin - binsOffset || size == 0 ||
        size % pageSize != 0 || size > end - bin) {
      return bin;
    }
    bin += size;
  }
  return std::nullopt;
}

}  // namespace zelvreg::machine
