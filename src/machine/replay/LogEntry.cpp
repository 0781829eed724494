#include "machine/replay/LogEntry.h"

#include <bit>

#include "machine/base/MachineError.h"
#include "machine/replay/Marvin32.h"

namespace zelvreg::machine {

using namespace hiveFormat;

namespace {

// In an entry.
constexpr std::string_view entryKind = "HvLE";
constexpr std::size_t entrySizeOffset = 4;
constexpr std::size_t entryFlagsOffset = 8;
constexpr std::size_t entrySequenceOffset = 0xC;
constexpr std::size_t entryBinsOffset = 0x10;
constexpr std::size_t pageCountOffset = 0x14;
constexpr std::size_t contentHashOffset = 0x18;
constexpr std::size_t headHashOffset = 0x20;
constexpr std::size_t entryHead = 0x28;
constexpr std::size_t placeSize = 8;
constexpr std::size_t entryUnit = 512;

// In a log with a bitmap.
constexpr std::string_view bitmapKind = "DIRT";
constexpr std::size_t bitmapPage = 512;
constexpr std::size_t bitsInByte = 8;

// The bytes are looked at again when they are copied, and whoever writes the log meanwhile must not
// lead us elsewhere.
void refuseUnless(bool isAsBefore) {
  if (!isAsBefore) {
    throw MachineError("they were written by another program while they were read");
  }
}

bool isSizeOfBins(std::uint32_t size) { return size >= pageSize && size % pageSize == 0; }

std::uint64_t roundedUp(std::uint64_t size, std::uint64_t unit) {
  return (size + unit - 1) / unit * unit;
}

bool hasTrueHashes(LogBytes entry) {
  return numberIn<std::uint64_t>(entry, headHashOffset) == marvin32(entry.first(headHashOffset)) &&
         numberIn<std::uint64_t>(entry, contentHashOffset) == marvin32(entry.subspan(entryHead));
}

bool fitsItsPages(const LogEntry& entry) {
  std::uint64_t room = entry.pages.size();
  for (std::size_t at = 0; at < entry.places.size(); at += placeSize) {
    const std::uint64_t offset = numberIn<std::uint32_t>(entry.places, at);
    const std::uint64_t size = numberIn<std::uint32_t>(entry.places, at + sizeof(std::uint32_t));
    if (size > room || offset + size > entry.binsSize) {
      return false;
    }
    room -= size;
  }
  return true;
}

}  // namespace

std::optional<LogEntry> entryAt(LogBytes log, std::uint64_t offset) {
  if (offset > log.size() || log.size() - offset < entryUnit) {
    return std::nullopt;
  }
  const LogBytes rest = log.subspan(offset);
  const auto size = numberIn<std::uint32_t>(rest, entrySizeOffset);
  if (!hasLetters(rest, 0, entryKind) || size < entryUnit || size % entryUnit != 0 ||
      size > rest.size()) {
    return std::nullopt;
  }
  const LogBytes bytes = rest.first(size);
  LogEntry entry{.size = size,
                 .sequence = numberIn<std::uint32_t>(bytes, entrySequenceOffset),
                 .flags = numberIn<std::uint32_t>(bytes, entryFlagsOffset),
                 .binsSize = numberIn<std::uint32_t>(bytes, entryBinsOffset),
                 .pageCount = numberIn<std::uint32_t>(bytes, pageCountOffset),
                 .places = {},
                 .pages = {}};
  if (!isSizeOfBins(entry.binsSize) || entry.pageCount == 0 ||
      entry.pageCount > (size - entryHead) / placeSize) {
    return std::nullopt;
  }
  entry.places = bytes.subspan(entryHead, entry.pageCount * placeSize);
  entry.pages = bytes.subspan(entryHead + entry.places.size());
  return fitsItsPages(entry) && hasTrueHashes(bytes) ? std::optional(entry) : std::nullopt;
}

void LogEntry::forEachPage(const TakePage& take) const {
  LogBytes rest = pages;
  for (std::size_t at = 0; at < places.size(); at += placeSize) {
    const std::uint64_t offset = numberIn<std::uint32_t>(places, at);
    const auto pageBytes = numberIn<std::uint32_t>(places, at + sizeof(std::uint32_t));
    refuseUnless(pageBytes <= rest.size() && offset + pageBytes <= binsSize);
    take(offset, rest.first(pageBytes));
    rest = rest.subspan(pageBytes);
  }
}

std::optional<BitmapLog> bitmapLog(LogBytes log, const BaseBlock& base) {
  const std::uint64_t start = std::uint64_t{baseBlockSize} * base.clustering;
  const std::uint64_t bitmapSize = base.binsSize / bitmapPage / bitsInByte;
  if (start == 0 || !isSizeOfBins(base.binsSize) ||
      start + bitmapKind.size() + bitmapSize > log.size() || !hasLetters(log, start, bitmapKind)) {
    return std::nullopt;
  }
  BitmapLog found;
  found.bitmap = log.subspan(start + bitmapKind.size(), bitmapSize);
  for (const std::byte bits : found.bitmap) {
    found.pageCount += static_cast<std::uint32_t>(std::popcount(std::to_integer<unsigned>(bits)));
  }
  const std::uint64_t first = start + roundedUp(bitmapKind.size() + bitmapSize, start);
  if (first + std::uint64_t{found.pageCount} * bitmapPage > log.size()) {
    return std::nullopt;
  }
  found.pages = log.subspan(first, std::size_t{found.pageCount} * bitmapPage);
  return found;
}

void BitmapLog::forEachPage(const TakePage& take) const {
  LogBytes rest = pages;
  for (std::size_t bit = 0; bit < bitmap.size() * bitsInByte; ++bit) {
    const auto bits = std::to_integer<unsigned>(bitmap[bit / bitsInByte]);
    if ((bits >> bit % bitsInByte & 1U) != 0) {
      refuseUnless(!rest.empty());
      take(std::uint64_t{bit} * bitmapPage, rest.first(bitmapPage));
      rest = rest.subspan(bitmapPage);
    }
  }
}

}  // namespace zelvreg::machine
