#include "machine/hive/HiveBins.h"

namespace zelvreg::machine {

using namespace hiveFormat;

namespace {

// As often the same cell may be looked at: once for each search among few subkeys, and then to
// read it.
constexpr std::size_t looksAtPage = 64;

}  // namespace

HiveBins::HiveBins(std::span<const std::byte> hive)
    : bytes(hive), looksLeft(hive.size() / pageSize * looksAtPage) {}

bool HiveBins::isBinFrom(std::uint64_t border, std::uint64_t end) {
  for (; border < end; border += pageSize) {
    if (looksLeft == 0) {
      return true;
    }
    --looksLeft;
    if (looksLikeBin(border) && isBin(border)) {
      return true;
    }
  }
  return false;
}

bool HiveBins::looksLikeBin(std::uint64_t page) const {
  return bytes.size() - page >= binHeader && hasLetters(bytes, page, binKind) &&
         numberIn<std::uint32_t>(bytes, page + binPlace) == page - binsOffset;
}

bool HiveBins::isBin(std::uint64_t page) {
  if (!begins) {
    findBins();
  }
  return (*begins)[page / pageSize];
}

// Behind a header that is damaged everything that looks like a bin counts as one.
void HiveBins::findBins() {
  begins.emplace(bytes.size() / pageSize + 1);
  std::uint64_t bin = binsOffset;
  while (bin < bytes.size() && looksLikeBin(bin)) {
    (*begins)[bin / pageSize] = true;
    const auto size = numberIn<std::uint32_t>(bytes, bin + binSize);
    if (size == 0 || size % pageSize != 0) {
      break;
    }
    bin += size;
  }
  for (; bin < bytes.size(); bin += pageSize) {
    (*begins)[bin / pageSize] = true;
  }
}

}  // namespace zelvreg::machine
