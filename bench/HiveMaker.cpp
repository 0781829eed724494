#include "HiveMaker.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "machine/hive/HiveBytes.h"
#include "machine/hive/NameHash.h"

namespace zelvreg::bench {
namespace {

namespace fs = std::filesystem;
namespace format = machine::hiveFormat;
using machine::Registry;
using machine::RegistryKey;
using machine::RegistryValue;

constexpr std::size_t binHeader = 0x20;
constexpr std::size_t binOffset = 4;
constexpr std::size_t binSize = 8;
constexpr std::size_t sequenceOffset = 4;
constexpr std::size_t fileFormatOffset = 0x20;
constexpr std::uint16_t rootFlags = 0x0C;
constexpr std::size_t mostInOneList = 512;

// Of the access list that all keys share: no more than its header.
constexpr std::size_t securityPrevious = 8;
constexpr std::size_t securityNext = 12;
constexpr std::size_t descriptorSize = 0x14;
constexpr std::string_view emptyDescriptor("\1\0\0\x80\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 20);
constexpr std::size_t descriptorOffset = 0x18;

// A name as hives hold it: Latin-1 where that is enough, else UTF-16.
struct StoredName {
  explicit StoredName(std::u16string_view name)
      : isNarrow(std::ranges::all_of(name, [](char16_t unit) { return unit < 0x100; })) {
    if (isNarrow) {
      std::ranges::transform(name, std::back_inserter(bytes),
                             [](char16_t unit) { return static_cast<char>(unit); });
    } else {
      bytes.assign(reinterpret_cast<const char*>(name.data()), name.size() * sizeof(char16_t));
    }
  }

  bool isNarrow;
  std::string bytes;
};

// Places are those in the file.
class HiveImageMaker {
 public:
  explicit HiveImageMaker(Registry& source) : registry(source), bytes(format::binsOffset, '\0') {}

  const std::string& make(RegistryKey& root) {
    security = cell(descriptorOffset - format::cellHeader + emptyDescriptor.size());
    const std::size_t rootPlace = addKey(root, 0);
    put<std::uint16_t>(rootPlace + format::keyFlags,
                       static_cast<std::uint16_t>(format::narrowNameFlag | rootFlags));
    closeBin();
    finishSecurity();
    finishHeader(rootPlace);
    return bytes;
  }

 private:
  template <typename Number>
  void put(std::size_t place, Number number) {
    std::memcpy(bytes.data() + place, &number, sizeof number);
  }
  void putText(std::size_t place, std::string_view text) {
    std::ranges::copy(text, bytes.begin() + static_cast<std::ptrdiff_t>(place));
  }
  void putLink(std::size_t place, std::size_t target) {
    put(place, static_cast<std::uint32_t>(target - format::binsOffset));
  }

  // A cell in use with room for so many bytes after its size. No cell crosses the end of a bin.
  std::size_t cell(std::size_t content) {
    const std::size_t size =
        (format::cellHeader + content + format::cellUnit - 1) / format::cellUnit * format::cellUnit;
    if (next + size > bytes.size()) {
      closeBin();
      openBin(size);
    }
    const std::size_t place = next;
    put(place, -static_cast<std::int32_t>(size));
    next += size;
    return place;
  }

  void openBin(std::size_t cellSize) {
    const std::size_t start = bytes.size();
    const std::size_t size =
        (binHeader + cellSize + format::pageSize - 1) / format::pageSize * format::pageSize;
    bytes.resize(start + size);
    putText(start, "hbin");
    put(start + binOffset, static_cast<std::uint32_t>(start - format::binsOffset));
    put(start + binSize, static_cast<std::uint32_t>(size));
    next = start + binHeader;
  }

  // What is left of it becomes a free cell.
  void closeBin() {
    if (next < bytes.size()) {
      put(next, static_cast<std::uint32_t>(bytes.size() - next));
      next = bytes.size();
    }
  }

  std::size_t addKey(RegistryKey& source, std::size_t parent) {
    ++keys;
    const StoredName name(source.name());
    const std::size_t place = cell(format::keyName - format::cellHeader + name.bytes.size());
    putText(place + format::cellKind, "nk");
    put(place + format::keyFlags, name.isNarrow ? format::narrowNameFlag : std::uint16_t{0});
    if (parent != 0) {
      putLink(place + format::keyParent, parent);
    }
    for (const std::size_t link : {format::subkeyList, format::subkeyList + sizeof(format::noLink),
                                   format::valueList, format::keyClass}) {
      put(place + link, format::noLink);
    }
    putLink(place + format::keySecurity, security);
    put(place + format::keyNameLength, static_cast<std::uint16_t>(name.bytes.size()));
    putText(place + format::keyName, name.bytes);
    addValues(source, place);
    addSubkeys(source, place);
    return place;
  }

  void addValues(RegistryKey& source, std::size_t key) {
    const machine::ValueList& values = registry.values(source);
    std::vector<std::size_t> places;
    for (std::size_t index = 0; index < values.size(); ++index) {
      places.push_back(value(*values.at(index)));
    }
    if (!places.empty()) {
      put(key + format::valueCount, static_cast<std::uint32_t>(places.size()));
      putLink(key + format::valueList, links(places));
    }
  }

  std::size_t value(const RegistryValue& source) {
    const StoredName name(source.name());
    const std::string_view data(reinterpret_cast<const char*>(source.data), source.dataSize);
    if (data.size() > format::partSize) {
      throw std::runtime_error("a value is too large for one cell of a hive");
    }
    const std::size_t place = cell(format::valueName - format::cellHeader + name.bytes.size());
    putText(place + format::cellKind, "vk");
    put(place + format::valueNameLength, static_cast<std::uint16_t>(name.bytes.size()));
    put(place + format::valueType, static_cast<std::uint32_t>(source.type));
    put(place + format::valueFlags, name.isNarrow ? format::narrowValueNameFlag : std::uint16_t{0});
    putText(place + format::valueName, name.bytes);
    const bool isInLink = data.size() <= format::largestDataInLink;
    put(place + format::valueSize,
        static_cast<std::uint32_t>(data.size() | (isInLink ? format::sizeOfDataInLink : 0)));
    if (isInLink) {
      putText(place + format::valueData, data);
    } else {
      const std::size_t content = cell(data.size());
      putText(content + format::cellHeader, data);
      putLink(place + format::valueData, content);
    }
    return place;
  }

  void addSubkeys(RegistryKey& source, std::size_t key) {
    std::vector<Subkey> subkeys;
    registry.children(source).forEach([&](RegistryKey* child) {
      if (!child->isAlias) {
        subkeys.push_back({addKey(*child, key), machine::hashOfName(child->name())});
      }
    });
    if (!subkeys.empty()) {
      put(key + format::subkeyCount, static_cast<std::uint32_t>(subkeys.size()));
      putLink(key + format::subkeyList, listOf(subkeys));
    }
  }

  struct Subkey {
    std::size_t place;
    std::uint32_t hash;
  };

  // One list, or a list of lists.
  std::size_t listOf(std::span<const Subkey> subkeys) {
    if (subkeys.size() <= mostInOneList) {
      return hashList(subkeys);
    }
    std::vector<std::size_t> lists;
    for (; !subkeys.empty(); subkeys = subkeys.subspan(std::min(mostInOneList, subkeys.size()))) {
      lists.push_back(hashList(subkeys.first(std::min(mostInOneList, subkeys.size()))));
    }
    const std::size_t place = beginList("ri", lists.size(), sizeof(std::uint32_t));
    putLinks(place + format::listEntries, lists);
    return place;
  }

  std::size_t hashList(std::span<const Subkey> subkeys) {
    constexpr std::size_t entrySize = 2 * sizeof(std::uint32_t);
    const std::size_t place = beginList("lh", subkeys.size(), entrySize);
    std::size_t entry = place + format::listEntries;
    for (const Subkey& subkey : subkeys) {
      putLink(entry, subkey.place);
      put(entry + sizeof(std::uint32_t), subkey.hash);
      entry += entrySize;
    }
    return place;
  }

  std::size_t beginList(std::string_view letters, std::size_t count, std::size_t entrySize) {
    const std::size_t place = cell(format::listEntries - format::cellHeader + count * entrySize);
    putText(place + format::listKind, letters);
    put(place + format::listCount, static_cast<std::uint16_t>(count));
    return place;
  }

  std::size_t links(std::span<const std::size_t> targets) {
    const std::size_t place = cell(targets.size() * sizeof(std::uint32_t));
    putLinks(place + format::cellHeader, targets);
    return place;
  }

  void putLinks(std::size_t place, std::span<const std::size_t> targets) {
    for (const std::size_t target : targets) {
      putLink(place, target);
      place += sizeof(std::uint32_t);
    }
  }

  void finishSecurity() {
    putText(security + format::cellKind, "sk");
    putLink(security + securityPrevious, security);
    putLink(security + securityNext, security);
    put(security + format::securityUses, keys);
    put(security + descriptorSize, static_cast<std::uint32_t>(emptyDescriptor.size()));
    putText(security + descriptorOffset, emptyDescriptor);
  }

  void finishHeader(std::size_t root) {
    putText(0, format::fileKind);
    put(sequenceOffset, std::uint32_t{1});
    put(sequenceOffset + sizeof(std::uint32_t), std::uint32_t{1});
    put(format::majorVersionOffset, format::majorVersion);
    put(format::minorVersionOffset, format::firstVersionWithHashes);
    put(fileFormatOffset, std::uint32_t{1});
    putLink(format::rootOffset, root);
    put(format::binsSizeOffset, static_cast<std::uint32_t>(bytes.size() - format::binsOffset));
    std::uint32_t sum = 0;
    for (std::size_t place = 0; place < format::checksumOffset; place += sizeof sum) {
      std::uint32_t word = 0;
      std::memcpy(&word, bytes.data() + place, sizeof word);
      sum ^= word;
    }
    put(format::checksumOffset, sum);
  }

  Registry& registry;
  std::string bytes;
  std::size_t next = format::binsOffset;  // where the next cell goes in the last bin
  std::size_t security = 0;
  std::uint32_t keys = 0;
};

}  // namespace

void makeHive(const fs::path& file, Registry& registry, RegistryKey& root) {
  HiveImageMaker maker(registry);
  const std::string& bytes = maker.make(root);
  std::ofstream output(file, std::ios::binary);
  if (!output.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
    throw std::runtime_error(file.string() + " cannot be written; check the room left");
  }
}

}  // namespace zelvreg::bench
