// The records in the bytes of a hive; docs/hive-format.md tells what stands where. Every offset,
// size and count is checked before it is used. What does not lie in the bytes, in a cell that is in
// use, in one bin and large enough for it, is absent.
#ifndef ZELVREG_MACHINE_HIVE_HIVE_IMAGE_H
#define ZELVREG_MACHINE_HIVE_HIVE_IMAGE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "machine/hive/HiveBins.h"
#include "machine/hive/HiveText.h"

namespace zelvreg::machine {

// Links are offsets from the first bin, as they stand in a hive; places are offsets in the file.
// Both may lead anywhere until they have been followed.
using HiveLink = std::uint32_t;
using HivePlace = std::uint64_t;

struct HiveKey {
  std::optional<HiveText> name;  // none if it does not fit into its cell
  HiveLink parent = 0;
  std::uint32_t subkeyCount = 0;
  HiveLink subkeyList = 0;
  std::uint32_t valueCount = 0;
  HiveLink valueList = 0;
};

// A list of links: of keys, of lists of keys, of values, or of the parts of a large value.
struct HiveList {
  enum class Kind : std::uint8_t {
    Links,   // "li", and lists without letters
    Hints,   // "lf": a hint of the name follows each link
    Hashes,  // "lh": a hash of the name does
    Lists,   // "ri": the links are those of other lists
  };
  Kind kind = Kind::Links;
  bool isWhole = true;  // false if it counts more entries than its cell holds, which are left out
  std::span<const std::byte> entries;

  [[nodiscard]] std::size_t size() const { return entries.size() / entrySize(); }
  [[nodiscard]] bool hasMarks() const { return kind == Kind::Hints || kind == Kind::Hashes; }
  // Where an entry leads to, and the hint or hash beside it.
  [[nodiscard]] HivePlace placeAt(std::size_t index) const;
  [[nodiscard]] std::uint32_t markAt(std::size_t index) const;
  // The first entry from an index on with this mark beside it; size() if there is none.
  [[nodiscard]] std::size_t findMark(std::uint32_t mark, std::size_t from) const;

  static constexpr std::size_t markedEntrySize = 8;
  [[nodiscard]] std::size_t entrySize() const {
    return hasMarks() ? markedEntrySize : sizeof(HiveLink);
  }
};

// The data of a value: in one piece, or in parts.
struct HiveData {
  std::size_t size = 0;
  std::span<const std::byte> piece;    // empty if it is in parts
  std::optional<HiveList> parts = {};  // enough for `size`; where they lead to is not checked yet
};

struct HiveRecord {
  std::optional<HiveText> name;  // none if it does not fit into its cell
  std::uint32_t type = 0;
  std::optional<HiveData> data;  // none if it cannot be where the record says
};

class HiveImage {
 public:
  // The bytes are somebody else's, and must outlive this object. Throws MachineError that says only
  // what is wrong, if no hive with a root key begins there.
  explicit HiveImage(std::span<const std::byte> hive);

  // Of the header and all bins.
  [[nodiscard]] std::size_t size() const { return end; }
  [[nodiscard]] HivePlace root() const;

  // Has the processor fetch what is there, which is going to be asked for.
  void expect(HivePlace place) const {
    if (place < end) {
      __builtin_prefetch(bytes.data() + place);
    }
  }

  [[nodiscard]] std::optional<HiveKey> keyAt(HivePlace place) const;
  [[nodiscard]] std::optional<HiveRecord> valueAt(HivePlace place) const;

  // The list of a key's subkeys, or one of the lists in it.
  [[nodiscard]] std::optional<HiveList> subkeyList(HivePlace place) const;
  // The list of values of a key that has any.
  [[nodiscard]] std::optional<HiveList> valueList(const HiveKey& key) const;

  // One part of a large value, which must hold so many bytes; none if it does not.
  [[nodiscard]] std::optional<std::span<const std::byte>> partAt(HivePlace place,
                                                                 std::size_t size) const;

 private:
  // With its size in front; empty if there is none.
  using Cell = std::span<const std::byte>;

  [[nodiscard]] Cell cellAt(HivePlace place) const;
  [[nodiscard]] Cell cellOfKind(HivePlace place, std::string_view kind, std::size_t smallest) const;
  [[nodiscard]] std::optional<HiveList> linksAt(HivePlace place, std::size_t count) const;
  [[nodiscard]] std::optional<HiveData> dataOf(Cell record) const;
  [[nodiscard]] std::optional<HiveData> dataAt(HivePlace place, std::size_t size) const;

  std::span<const std::byte> bytes;
  HivePlace end;  // of the bins
  mutable HiveBins bins;
};

// Where a link leads to.
HivePlace placeOf(HiveLink link);

}  // namespace zelvreg::machine

#endif
