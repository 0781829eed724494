#include "machine/hive/HiveCheck.h"

#include <array>
#include <unordered_map>
#include <vector>

#include "machine/base/MachineError.h"
#include "machine/base/PlainFile.h"
#include "machine/hive/HiveBytes.h"
#include "machine/hive/HiveFile.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {

using namespace hiveFormat;

namespace {

// Windows lets no key lie deeper.
constexpr std::size_t mostLevels = 512;

class HiveWalk {
 public:
  explicit HiveWalk(const HiveBytes& hiveBytes)
      : hive(hiveBytes), end(binsOffset + hive.get<std::uint32_t>(binsSizeOffset)) {
    if (end > hive.all().size()) {
      refuse("its header speaks of more content than it has");
    }
    taken.resize(end / cellUnit + 1);
  }

  void go() {
    const std::size_t root = hive.follow(rootOffset);
    try {
      takeKey(root);
      for (const auto& [record, uses] : securityUsers) {
        if (hive.get<std::uint32_t>(record + securityUses) < uses) {
          refuse("more keys use one of its access lists than are counted");
        }
      }
    } catch (const MachineError& error) {
      throw MachineError(place() + error.what());
    }
  }

 private:
  [[noreturn]] static void refuse(const char* what) { throw MachineError(what); }

  // The key that is being looked at; the keys above it are those on the way to it.
  [[nodiscard]] std::string place() const {
    std::string path;
    for (std::size_t level = 1; level < way.size(); ++level) {
      path += "\\" + utf8(hive.keyNameAt(way[level]));
    }
    return path.empty() ? path : "the key " + path + ": ";
  }

  // Makes a cell this owner's alone, which must have room for so much. Gives its size.
  std::size_t take(std::size_t cell, std::size_t room) {
    if (cell % cellUnit != 0 || cell < binsOffset || cell >= end) {
      refuse("a part of it lies outside the file");
    }
    const auto head = hive.get<std::int32_t>(cell);
    if (head >= 0) {
      refuse("a part of it counts as free");
    }
    const auto size = static_cast<std::size_t>(-static_cast<std::int64_t>(head));
    if (size % cellUnit != 0 || size > end - cell || size - cellHeader < room) {
      refuse("a part of it has no proper size");
    }
    for (std::size_t unit = cell / cellUnit; unit < (cell + size) / cellUnit; ++unit) {
      if (taken[unit]) {
        refuse("a part of it belongs to another key or value, too");
      }
      taken[unit] = true;
    }
    return size;
  }

  [[nodiscard]] bool isOfKind(std::size_t cell, std::string_view kind) const {
    return hive.text(cell + cellKind, kind.size()) == kind;
  }

  void takeKey(std::size_t node) {
    if (way.size() > mostLevels) {
      refuse("keys lie deeper in it than Windows lets them");
    }
    take(node, keyName - cellHeader + hive.get<std::uint16_t>(node + keyNameLength));
    if (!isOfKind(node, "nk")) {
      refuse("its list of subkeys leads to something else");
    }
    if (!way.empty() && hive.follow(node + keyParent) != way.back()) {
      refuse("its list of subkeys leads to a key of another");
    }
    way.push_back(node);
    takeSecurity(node);
    const auto classLength = hive.get<std::uint16_t>(node + keyClassLength);
    if (classLength > 0 && hive.get<std::uint32_t>(node + keyClass) != noLink) {
      take(hive.follow(node + keyClass), classLength);
    }
    takeValues(node);
    takeSubkeys(node);
    way.pop_back();
  }

  void takeSecurity(std::size_t node) {
    if (hive.get<std::uint32_t>(node + keySecurity) == noLink) {
      return;
    }
    const std::size_t record = hive.follow(node + keySecurity);
    if (++securityUsers[record] == 1) {
      take(record, securityUses);
      if (!isOfKind(record, "sk")) {
        refuse("its access list is something else");
      }
    }
  }

  void takeSubkeys(std::size_t node) {
    const auto count = hive.get<std::uint32_t>(node + subkeyCount);
    if (count == 0) {
      return;
    }
    const std::size_t list = hive.follow(node + subkeyList);
    std::size_t found = 0;
    if (isOfKind(list, "ri")) {
      const std::size_t leaves = takeList(list, sizeof(std::uint32_t));
      for (std::size_t index = 0; index < leaves; ++index) {
        found += takeLeaf(hive.follow(list + listEntries + sizeof(std::uint32_t) * index));
      }
    } else {
      found = takeLeaf(list);
    }
    if (found != count) {
      refuse("it has not as many subkeys as are counted");
    }
  }

  std::size_t takeList(std::size_t list, std::size_t entrySize) {
    const auto count = hive.get<std::uint16_t>(list + listCount);
    take(list, listEntries - cellHeader + entrySize * count);
    return count;
  }

  std::size_t takeLeaf(std::size_t leaf) {
    const bool hasHashes = isOfKind(leaf, "lh") || isOfKind(leaf, "lf");
    if (!hasHashes && !isOfKind(leaf, "li")) {
      refuse("its list of subkeys is something else");
    }
    const std::size_t entrySize = sizeof(std::uint32_t) * (hasHashes ? 2 : 1);
    const std::size_t count = takeList(leaf, entrySize);
    for (std::size_t index = 0; index < count; ++index) {
      takeKey(hive.follow(leaf + listEntries + entrySize * index));
    }
    return count;
  }

  void takeValues(std::size_t node) {
    const std::size_t count = hive.get<std::uint32_t>(node + valueCount);
    if (count == 0) {
      return;
    }
    const std::size_t list = hive.follow(node + valueList);
    take(list, sizeof(std::uint32_t) * count);
    for (std::size_t index = 0; index < count; ++index) {
      takeValue(hive.follow(list + cellHeader + sizeof(std::uint32_t) * index));
    }
  }

  void takeValue(std::size_t record) {
    take(record, valueName - cellHeader + hive.get<std::uint16_t>(record + valueNameLength));
    if (!isOfKind(record, "vk")) {
      refuse("its list of values leads to something else");
    }
    const auto size = hive.get<std::uint32_t>(record + valueSize);
    if ((size & sizeOfDataInLink) != 0) {
      if ((size & ~sizeOfDataInLink) > largestDataInLink) {
        refuse("a value of it has no proper size");
      }
    } else if (size > 0) {
      takeData(hive.follow(record + valueData), size);
    }
  }

  void takeData(std::size_t cell, std::size_t size) {
    const bool hasParts = size > partSize && isOfKind(cell, "db") &&
                          hive.get<std::uint32_t>(minorVersionOffset) >= firstVersionWithParts;
    if (!hasParts) {
      take(cell, size);
      return;
    }
    take(cell, partsRecordCell - cellHeader - sizeof(std::uint32_t));
    const std::size_t parts = hive.get<std::uint16_t>(cell + listCount);
    const std::size_t list = hive.follow(cell + listEntries);
    take(list, sizeof(std::uint32_t) * parts);
    for (std::size_t part = 0; part < parts; ++part) {
      const std::size_t content = std::min(size, partSize);
      take(hive.follow(list + cellHeader + sizeof(std::uint32_t) * part), content);
      size -= content;
    }
    if (size != 0) {
      refuse("a value of it has fewer parts than it needs");
    }
  }

  const HiveBytes& hive;
  const std::size_t end;
  std::vector<bool> taken;       // by offset / cellUnit
  std::vector<std::size_t> way;  // the cells of the keys from the root down
  std::unordered_map<std::size_t, std::uint32_t> securityUsers;  // by the record's cell
};

}  // namespace

void checkHive(std::string content) {
  const HiveBytes hive(std::move(content));
  HiveWalk(hive).go();
}

std::optional<std::string> whyUnsound(const HiveFile& hive) {
  try {
    checkHive(readWholeFile(hive.source()));
    return std::nullopt;
  } catch (const MachineError& error) {
    return hive.path().string() + " is damaged and is not written: " + error.what() +
           "; repair it with the means of Windows, or only scan this disk";
  }
}

}  // namespace zelvreg::machine
