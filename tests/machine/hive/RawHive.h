// A hive put together cell by cell, so that a test can have any kind of list, and any damage.
#ifndef ZELVREG_TESTS_MACHINE_HIVE_RAW_HIVE_H
#define ZELVREG_TESTS_MACHINE_HIVE_RAW_HIVE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "machine/hive/HiveBytes.h"
#include "machine/hive/NameHash.h"

namespace zelvreg::fixture {

// What everything here gives and takes are places in the file.
class RawHive {
 public:
  using Places = std::vector<std::size_t>;

  // With a root key and room for so many bytes of cells, in one bin.
  explicit RawHive(std::size_t room = std::size_t{16} * machine::hiveFormat::pageSize)
      : bytes(std::string(machine::hiveFormat::binsOffset + room, '\0')),
        next(machine::hiveFormat::binsOffset + machine::hiveFormat::binHeader),
        rootKey(key("ROOT", 0)) {
    using namespace machine::hiveFormat;
    bytes.write(0, fileKind);
    bytes.put<std::uint32_t>(majorVersionOffset, majorVersion);
    bytes.put<std::uint32_t>(minorVersionOffset, firstVersionWithHashes);
    bytes.put<std::uint32_t>(formatOffset, 1);
    bytes.put<std::uint32_t>(binsSizeOffset, static_cast<std::uint32_t>(room));
    bytes.write(binsOffset, binKind);
    bytes.put<std::uint32_t>(binsOffset + binSize, static_cast<std::uint32_t>(room));
    bytes.put<std::uint16_t>(rootKey + keyFlags, narrowNameFlag | rootFlags);
    bytes.putLink(rootOffset, rootKey);
  }

  [[nodiscard]] std::size_t root() const { return rootKey; }

  // A cell in use with room for so many bytes after its size.
  std::size_t cell(std::size_t content) {
    const std::size_t size = (machine::hiveFormat::cellHeader + content + 7) / 8 * 8;
    const std::size_t place = next;
    bytes.putCell(place, size);
    next += size;
    return place;
  }

  std::size_t key(std::string_view name, std::size_t parent) {
    return key(name, machine::hiveFormat::narrowNameFlag, parent);
  }
  // Its name is UTF-16, of so many bytes as are given.
  std::size_t wideKey(std::string_view name, std::size_t parent) { return key(name, 0, parent); }

  std::size_t value(std::string_view name, std::uint32_t type, std::string_view data) {
    using namespace machine::hiveFormat;
    const std::size_t place = record(name, type, data.size());
    if (data.size() <= largestDataInLink) {
      bytes.put<std::uint32_t>(place + valueSize,
                               sizeOfDataInLink | static_cast<std::uint32_t>(data.size()));
      bytes.write(place + valueData, data);
    } else {
      const std::size_t content = cell(data.size());
      bytes.write(content + cellHeader, data);
      bytes.putLink(place + valueData, content);
    }
    return place;
  }

  // One whose data lie in parts.
  std::size_t largeValue(std::string_view name, std::uint32_t type, std::string_view data) {
    using namespace machine::hiveFormat;
    const std::size_t place = record(name, type, data.size());
    Places parts;
    for (; !data.empty(); data.remove_prefix(std::min(partSize, data.size()))) {
      const std::string_view part = data.substr(0, partSize);
      // Also the last one has the 4 bytes more that each other one has.
      parts.push_back(cell(part.size() + 4));
      bytes.write(parts.back() + cellHeader, part);
    }
    const std::size_t head = cell(partsRecordCell - cellHeader);
    bytes.write(head + cellKind, "db");
    bytes.put<std::uint16_t>(head + listCount, static_cast<std::uint16_t>(parts.size()));
    bytes.putLink(head + listEntries, links(parts));
    bytes.putLink(place + valueData, head);
    return place;
  }

  void giveValues(std::size_t key, const Places& values) {
    using namespace machine::hiveFormat;
    bytes.put<std::uint32_t>(key + valueCount, static_cast<std::uint32_t>(values.size()));
    bytes.putLink(key + valueList, links(values));
  }

  // A list of these letters; of keys, or with "ri" of lists.
  std::size_t list(std::string_view letters, const Places& entries) {
    using namespace machine::hiveFormat;
    const bool hasMarks = letters == "lh" || letters == "lf";
    const std::size_t entrySize = hasMarks ? 8 : 4;
    const std::size_t place = cell(listEntries - cellHeader + entrySize * entries.size());
    bytes.write(place + listKind, letters);
    bytes.put<std::uint16_t>(place + listCount, static_cast<std::uint16_t>(entries.size()));
    for (std::size_t index = 0; index < entries.size(); ++index) {
      const std::size_t entry = place + listEntries + entrySize * index;
      bytes.putLink(entry, entries[index]);
      if (hasMarks) {
        const std::u16string name = bytes.keyNameAt(entries[index]);
        bytes.put<std::uint32_t>(
            entry + 4, letters == "lh" ? machine::hashOfName(name) : machine::hintOfName(name));
      }
    }
    return place;
  }

  void giveList(std::size_t key, std::size_t list, std::size_t count) {
    using namespace machine::hiveFormat;
    bytes.put<std::uint32_t>(key + subkeyCount, static_cast<std::uint32_t>(count));
    bytes.putLink(key + subkeyList, list);
  }

  // Subkeys in one list of these letters.
  Places giveSubkeys(std::size_t parent, std::string_view letters,
                     const std::vector<std::string>& names) {
    Places keys;
    for (const std::string& name : names) {
      keys.push_back(key(name, parent));
    }
    giveList(parent, list(letters, keys), keys.size());
    return keys;
  }

  // The bytes of the file as they are now. What is left of the bin is one free cell.
  [[nodiscard]] std::string file() const {
    machine::HiveBytes whole = bytes;
    if (next < whole.all().size()) {
      whole.put<std::uint32_t>(next, static_cast<std::uint32_t>(whole.all().size() - next));
    }
    sign(whole);
    return whole.all();
  }

  // Puts the checksum of a header right.
  static void sign(machine::HiveBytes& hive) {
    using namespace machine::hiveFormat;
    std::uint32_t sum = 0;
    for (std::size_t offset = 0; offset < checksumOffset; offset += 4) {
      sum ^= hive.get<std::uint32_t>(offset);
    }
    hive.put<std::uint32_t>(checksumOffset, sum);
  }

  machine::HiveBytes bytes;

 private:
  static constexpr std::size_t formatOffset = 0x20;
  static constexpr std::uint16_t rootFlags = 0x0C;

  std::size_t key(std::string_view name, std::uint16_t flags, std::size_t parent) {
    using namespace machine::hiveFormat;
    const std::size_t place = cell(keyName - cellHeader + name.size());
    bytes.write(place + cellKind, "nk");
    bytes.put<std::uint16_t>(place + keyFlags, flags);
    bytes.put<std::uint32_t>(
        place + keyParent, parent == 0 ? noLink : static_cast<std::uint32_t>(parent - binsOffset));
    for (const std::size_t link : {subkeyList, subkeyList + 4, valueList, keySecurity, keyClass}) {
      bytes.put<std::uint32_t>(place + link, noLink);
    }
    bytes.put<std::uint16_t>(place + keyNameLength, static_cast<std::uint16_t>(name.size()));
    bytes.write(place + keyName, name);
    return place;
  }

  std::size_t record(std::string_view name, std::uint32_t type, std::size_t size) {
    using namespace machine::hiveFormat;
    const std::size_t place = cell(valueName - cellHeader + name.size());
    bytes.write(place + cellKind, "vk");
    bytes.put<std::uint16_t>(place + valueNameLength, static_cast<std::uint16_t>(name.size()));
    bytes.put<std::uint32_t>(place + valueSize, static_cast<std::uint32_t>(size));
    bytes.put<std::uint32_t>(place + valueType, type);
    bytes.put<std::uint16_t>(place + valueFlags, narrowValueNameFlag);
    bytes.write(place + valueName, name);
    return place;
  }

  // A cell of links without letters.
  std::size_t links(const Places& places) {
    const std::size_t list = cell(4 * places.size());
    for (std::size_t index = 0; index < places.size(); ++index) {
      bytes.putLink(list + machine::hiveFormat::cellHeader + 4 * index, places[index]);
    }
    return list;
  }

  std::size_t next;
  std::size_t rootKey;
};

}  // namespace zelvreg::fixture

#endif
