#include "machine/offline/HiveLayout.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <string_view>

#include "machine/base/CaseFold.h"
#include "machine/base/MachineError.h"
#include "machine/base/PlainFile.h"
#include "machine/hive/HiveBytes.h"
#include "machine/hive/NameHash.h"

namespace zelvreg::machine {

using namespace hiveFormat;

namespace {

// In a key's cell.
constexpr std::size_t largestValueSize = 0x44;

constexpr std::size_t cellSize(std::size_t content) { return (cellHeader + content + 7) / 8 * 8; }

constexpr std::size_t partCount(std::size_t size) { return (size + partSize - 1) / partSize; }

constexpr std::size_t listOfPartsCell(std::size_t size) { return cellSize(4 * partCount(size)); }

// Parts the cell that holds a large value into the cells that Windows expects.
void partValue(HiveBytes& hive, std::uint32_t node, std::size_t record, std::size_t size) {
  const std::size_t cell = hive.follow(record + valueData);
  const std::size_t end = cell - static_cast<std::size_t>(hive.get<std::int32_t>(cell));
  const std::string content(hive.text(cell + cellHeader, size));
  const std::size_t list = cell + partsRecordCell;
  hive.putCell(cell, partsRecordCell);
  hive.write(cell + listKind, "db");
  hive.put<std::uint16_t>(cell + listCount, static_cast<std::uint16_t>(partCount(size)));
  hive.putLink(cell + listEntries, list);
  hive.put<std::uint32_t>(cell + listEntries + 4, 0);
  hive.putCell(list, listOfPartsCell(size));
  std::size_t place = list + listOfPartsCell(size);
  for (std::size_t part = 0; part < partCount(size); ++part) {
    const std::string_view piece = std::string_view(content).substr(part * partSize, partSize);
    const bool isLast = part + 1 == partCount(size);
    const std::size_t room = isLast ? end - place : cellSize(partSize);
    hive.putLink(list + cellHeader + 4 * part, place);
    hive.putCell(place, room);
    hive.write(place + cellHeader, piece);
    place += room;
  }
  hive.put<std::uint32_t>(record + valueSize, static_cast<std::uint32_t>(size));
  // It would otherwise say how much room was asked for.
  if (hive.get<std::uint32_t>(node + largestValueSize) == HiveLayout::sizeInOneCell(size)) {
    hive.put<std::uint32_t>(node + largestValueSize, static_cast<std::uint32_t>(size));
  }
}

// The list of a key's subkeys, which may be split into several lists.
class SubkeyList {
 public:
  SubkeyList(HiveBytes& hiveBytes, std::uint32_t node) : hive(hiveBytes) {
    const std::size_t list = hive.follow(node + subkeyList);
    if (hive.text(list + listKind, 2) != "ri") {
      addLeaf(list);
      return;
    }
    for (std::size_t index = 0; index < hive.get<std::uint16_t>(list + listCount); ++index) {
      addLeaf(hive.follow(list + listEntries + 4 * index));
    }
  }

  void sort() {
    std::ranges::stable_sort(keys, [](const Key& first, const Key& second) {
      return compareNames(first.name, second.name) < 0;
    });
    auto next = keys.begin();
    for (const std::size_t leaf : leaves) {
      const auto count = hive.get<std::uint16_t>(leaf + listCount);
      for (std::size_t index = 0; index < count; ++index) {
        writeEntry(leaf, index, *next++);
      }
    }
  }

 private:
  struct Key {
    std::size_t node;
    std::u16string name;
  };

  [[nodiscard]] bool hasHashes(std::size_t leaf) const {
    return hive.text(leaf + listKind, 2) != "li";
  }

  void addLeaf(std::size_t leaf) {
    leaves.push_back(leaf);
    // libhivex begins every list as one of Windows XP and later, which older systems do not know.
    if (hive.text(leaf + listKind, 2) == "lh" &&
        hive.get<std::uint32_t>(minorVersionOffset) < firstVersionWithHashes) {
      hive.write(leaf + listKind, "lf");
    }
    const std::size_t entrySize = hasHashes(leaf) ? 8 : 4;
    for (std::size_t index = 0; index < hive.get<std::uint16_t>(leaf + listCount); ++index) {
      const std::size_t node = hive.follow(leaf + listEntries + entrySize * index);
      keys.push_back({node, hive.keyNameAt(node)});
    }
  }

  void writeEntry(std::size_t leaf, std::size_t index, const Key& key) {
    const std::size_t entry = leaf + listEntries + (hasHashes(leaf) ? 8 : 4) * index;
    hive.putLink(entry, key.node);
    if (hasHashes(leaf)) {
      const bool isHash = hive.text(leaf + listKind, 2) == "lh";
      hive.put<std::uint32_t>(entry + 4, isHash ? hashOfName(key.name) : hintOfName(key.name));
    }
  }

  HiveBytes& hive;
  std::vector<std::size_t> leaves;
  std::vector<Key> keys;
};

}  // namespace

bool HiveLayout::hasPartsOfLargeValues(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::uint32_t version = 0;
  stream.seekg(minorVersionOffset);
  if (!stream.read(reinterpret_cast<char*>(&version), sizeof version)) {
    throw MachineError("its header cannot be read");
  }
  return version >= firstVersionWithParts;
}

bool HiveLayout::isLarge(std::size_t size) { return size > partSize; }

std::size_t HiveLayout::sizeInOneCell(std::size_t size) {
  const std::size_t last = size - (partCount(size) - 1) * partSize;
  // libhivex takes each part to be 8 bytes shorter than its cell, also the last one.
  constexpr std::size_t slack = 4;
  return partsRecordCell + listOfPartsCell(size) + (partCount(size) - 1) * cellSize(partSize) +
         cellSize(last + slack) - cellHeader;
}

void HiveLayout::apply(const std::filesystem::path& file) const {
  if (parents.empty() && largeValues.empty()) {
    return;
  }
  HiveBytes hive(readWholeFile(file));
  for (const LargeValue& value : largeValues) {
    partValue(hive, value.node, value.record, value.size);
  }
  for (const std::uint32_t parent : parents) {
    SubkeyList(hive, parent).sort();
  }
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  if (!stream.write(hive.all().data(), static_cast<std::streamsize>(hive.all().size())).flush()) {
    throw MachineError("its new content cannot be written; make room on the disk");
  }
}

}  // namespace zelvreg::machine
