#include "machine/hive/HiveImage.h"

#include <algorithm>
#include <array>

#include "machine/base/MachineError.h"
#include "machine/hive/HiveBytes.h"

namespace zelvreg::machine {

using namespace hiveFormat;

namespace {

using Bytes = std::span<const std::byte>;

// The name at an offset of a cell; none if it does not fit, or ends in half a unit.
std::optional<HiveText> nameIn(Bytes cell, std::size_t offset, std::size_t size, bool isNarrow) {
  if (size > cell.size() - offset || (!isNarrow && size % sizeof(char16_t) != 0)) {
    return std::nullopt;
  }
  return HiveText(cell.subspan(offset, size),
                  isNarrow ? HiveText::Form::Narrow : HiveText::Form::Wide);
}

// As many entries of a list as its cell holds.
HiveList listIn(Bytes cell, HiveList::Kind kind, std::size_t first, std::size_t count) {
  HiveList list{.kind = kind, .isWhole = true, .entries = {}};
  const std::size_t room = (cell.size() - first) / list.entrySize();
  list.isWhole = count <= room;
  list.entries = cell.subspan(first, std::min(count, room) * list.entrySize());
  return list;
}

// As the header says, which is checked.
HivePlace endOfBins(Bytes bytes) {
  constexpr const char* noHive = "it is not a registry hive, or its header is damaged";
  if (bytes.size() < binsOffset || !hasLetters(bytes, 0, fileKind)) {
    throw MachineError(noHive);
  }
  const auto binsSize = numberIn<std::uint32_t>(bytes, binsSizeOffset);
  if (bytes.size() - binsOffset < binsSize) {
    throw MachineError("its header speaks of more content than it has");
  }
  if (numberIn<std::uint32_t>(bytes, majorVersionOffset) != majorVersion ||
      numberIn<std::uint32_t>(bytes, checksumOffset) != baseBlockChecksum(bytes)) {
    throw MachineError(noHive);
  }
  return binsOffset + HivePlace{binsSize};
}

}  // namespace

HivePlace placeOf(HiveLink link) { return binsOffset + HivePlace{link}; }

HivePlace HiveList::placeAt(std::size_t index) const {
  return placeOf(numberIn<HiveLink>(entries, index * entrySize()));
}

std::uint32_t HiveList::markAt(std::size_t index) const {
  return numberIn<std::uint32_t>(entries, index * entrySize() + sizeof(HiveLink));
}

std::size_t HiveList::findMark(std::uint32_t mark, std::size_t from) const {
  constexpr std::size_t atOnce = 16;
  std::size_t index = from;
  for (; index + atOnce <= size(); index += atOnce) {
    // Without a way out of it, so that all are compared at once.
    bool isHere = false;
    for (std::size_t next = index; next < index + atOnce; ++next) {
      isHere |= numberIn<std::uint32_t>(entries, next * markedEntrySize + sizeof mark) == mark;
    }
    if (isHere) {
      break;
    }
  }
  while (index < size() && markAt(index) != mark) {
    ++index;
  }
  return index;
}

HiveImage::HiveImage(Bytes hive)
    : bytes(hive), end(endOfBins(hive)), bins(hive.first(static_cast<std::size_t>(end))) {
  if (!keyAt(root())) {
    throw MachineError("it has no root key");
  }
}

HivePlace HiveImage::root() const { return placeOf(numberIn<HiveLink>(bytes, rootOffset)); }

HiveImage::Cell HiveImage::cellAt(HivePlace place) const {
  if (place < binsOffset || place >= end || end - place < cellUnit || place % cellUnit != 0) {
    return {};
  }
  const auto head = numberIn<std::int32_t>(bytes, place);
  const auto size = static_cast<std::size_t>(-static_cast<std::int64_t>(head));
  if (head >= 0 || size > end - place || size < cellUnit || bins.areCrossedBy(place, size)) {
    return {};
  }
  return bytes.subspan(place, size);
}

HiveImage::Cell HiveImage::cellOfKind(HivePlace place, std::string_view kind,
                                      std::size_t smallest) const {
  const Cell cell = cellAt(place);
  return cell.size() >= smallest && hasLetters(cell, cellKind, kind) ? cell : Cell();
}

std::optional<HiveKey> HiveImage::keyAt(HivePlace place) const {
  const Cell cell = cellOfKind(place, "nk", keyName);
  if (cell.empty()) {
    return std::nullopt;
  }
  const bool isNarrow = (numberIn<std::uint16_t>(cell, keyFlags) & narrowNameFlag) != 0;
  return HiveKey{
      .name = nameIn(cell, keyName, numberIn<std::uint16_t>(cell, keyNameLength), isNarrow),
      .parent = numberIn<HiveLink>(cell, keyParent),
      .subkeyCount = numberIn<std::uint32_t>(cell, hiveFormat::subkeyCount),
      .subkeyList = numberIn<HiveLink>(cell, hiveFormat::subkeyList),
      .valueCount = numberIn<std::uint32_t>(cell, hiveFormat::valueCount),
      .valueList = numberIn<HiveLink>(cell, hiveFormat::valueList)};
}

std::optional<HiveList> HiveImage::subkeyList(HivePlace place) const {
  struct Letters {
    std::string_view letters;
    HiveList::Kind kind;
  };
  constexpr std::array<Letters, 4> kinds{{{"lh", HiveList::Kind::Hashes},
                                          {"lf", HiveList::Kind::Hints},
                                          {"li", HiveList::Kind::Links},
                                          {"ri", HiveList::Kind::Lists}}};
  const Cell cell = cellAt(place);
  for (const Letters& one : kinds) {
    if (!cell.empty() && hasLetters(cell, listKind, one.letters)) {
      return listIn(cell, one.kind, listEntries, numberIn<std::uint16_t>(cell, listCount));
    }
  }
  return std::nullopt;
}

std::optional<HiveList> HiveImage::linksAt(HivePlace place, std::size_t count) const {
  const Cell cell = cellAt(place);
  return cell.empty() ? std::nullopt
                      : std::optional(listIn(cell, HiveList::Kind::Links, cellHeader, count));
}

std::optional<HiveList> HiveImage::valueList(const HiveKey& key) const {
  return linksAt(placeOf(key.valueList), key.valueCount);
}

std::optional<HiveRecord> HiveImage::valueAt(HivePlace place) const {
  const Cell cell = cellOfKind(place, "vk", valueName);
  if (cell.empty()) {
    return std::nullopt;
  }
  const bool isNarrow = (numberIn<std::uint16_t>(cell, valueFlags) & narrowValueNameFlag) != 0;
  return HiveRecord{
      .name = nameIn(cell, valueName, numberIn<std::uint16_t>(cell, valueNameLength), isNarrow),
      .type = numberIn<std::uint32_t>(cell, valueType),
      .data = dataOf(cell)};
}

std::optional<HiveData> HiveImage::dataOf(Cell record) const {
  const auto size = numberIn<std::uint32_t>(record, valueSize);
  if ((size & sizeOfDataInLink) == 0) {
    return dataAt(placeOf(numberIn<HiveLink>(record, valueData)), size);
  }
  const std::size_t sizeInLink = size & ~sizeOfDataInLink;
  if (sizeInLink > largestDataInLink) {
    return std::nullopt;
  }
  return HiveData{.size = sizeInLink, .piece = record.subspan(valueData, sizeInLink)};
}

std::optional<HiveData> HiveImage::dataAt(HivePlace place, std::size_t size) const {
  if (size == 0) {
    return HiveData{};
  }
  const Cell cell = cellAt(place);
  if (cell.empty()) {
    return std::nullopt;
  }
  if (size <= cell.size() - cellHeader) {
    return HiveData{.size = size, .piece = cell.subspan(cellHeader, size)};
  }
  const bool hasParts = size > partSize && cell.size() >= listEntries + sizeof(HiveLink) &&
                        hasLetters(cell, cellKind, "db");
  if (!hasParts) {
    return std::nullopt;
  }
  const std::size_t count = (size + partSize - 1) / partSize;
  const auto parts = linksAt(placeOf(numberIn<HiveLink>(cell, listEntries)),
                             numberIn<std::uint16_t>(cell, listCount));
  if (!parts || parts->size() < count) {
    return std::nullopt;
  }
  return HiveData{.size = size, .piece = {}, .parts = parts};
}

std::optional<Bytes> HiveImage::partAt(HivePlace place, std::size_t size) const {
  const Cell cell = cellAt(place);
  return !cell.empty() && size <= cell.size() - cellHeader
             ? std::optional(cell.subspan(cellHeader, size))
             : std::nullopt;
}

}  // namespace zelvreg::machine
