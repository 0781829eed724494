// Reads the keys and values of a hive that may be damaged or hostile: damage is passed over, every
// key is given once, and all reading together takes no more than an honest hive of this size asks
// for.
#ifndef ZELVREG_MACHINE_HIVE_HIVE_READER_H
#define ZELVREG_MACHINE_HIVE_HIVE_READER_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "machine/hive/HiveImage.h"

namespace zelvreg::machine {

struct HiveSubkey {
  HiveText name;
  std::uint32_t node;  // the place of its record in the file
};

struct HiveValue {
  HiveText name;  // empty for the default value
  std::uint32_t type;
  std::span<const std::byte> bytes;
  bool isInHive;  // the bytes are those of the hive; else they live until the callback returns
};

// What a search for a subkey has found out without giving the others.
struct FoundSubkey {
  enum class Answer : std::uint8_t {
    Found,    // it is new, and counts as given from now on
    Absent,   // there is no such subkey
    Unclear,  // ask for all subkeys
  };
  Answer answer = Answer::Unclear;
  HiveSubkey subkey = {};
};

class HiveReader {
 public:
  using TakeSubkey = std::function<void(const HiveSubkey& subkey)>;
  using TakeValue = std::function<void(const HiveValue& value)>;

  // The bytes are somebody else's, and must outlive this object and what it gives. Throws
  // MachineError that says only what is wrong, if no hive with a root key begins there.
  explicit HiveReader(std::span<const std::byte> hive);

  [[nodiscard]] std::uint32_t root() const { return static_cast<std::uint32_t>(image.root()); }

  // Each subkey of a node that can be read, in the order of the hive, but for those in `known`,
  // which a search for them has given. A list that leads back to a key that was given before ends
  // there. Ask for the subkeys of a node once. False if anything was passed over.
  bool subkeys(std::uint32_t node, std::span<const std::uint32_t> known, const TakeSubkey& take);

  // One subkey by its name without regard to case. A long list is searched as Windows does it, by
  // its marks of names and its order. Where anything is damaged the answer is unclear.
  FoundSubkey findSubkey(std::uint32_t node, std::u16string_view name);

  // Each value of a node that can be read, in the order of the hive. Ask once for a node. False if
  // anything was passed over.
  bool values(std::uint32_t node, const TakeValue& take);

  // Whether a node has one value alone, and that one of this type.
  [[nodiscard]] bool hasJust(std::uint32_t node, std::uint32_t type) const;

 private:
  [[nodiscard]] bool firstVisit(HivePlace place);
  [[nodiscard]] static bool spend(std::size_t& budget, std::size_t amount);
  // The lists of keys that a key's list consists of; false if one of them is passed over.
  bool leavesOf(const HiveKey& key, std::size_t& budget, std::vector<HiveList>& leaves) const;
  bool takeLeaf(const HiveList& leaf, std::vector<std::uint32_t>& known, const TakeSubkey& take);
  struct Search {
    std::uint32_t parent;
    std::u16string_view name;
  };
  FoundSubkey searchByNames(std::span<const HiveList> leaves, const Search& search);
  FoundSubkey searchByMarks(std::span<const HiveList> leaves, const Search& search);
  FoundSubkey searchByOrder(std::span<const HiveList> leaves, const Search& search);
  // The key there, if it has a name and belongs where the search is.
  [[nodiscard]] std::optional<HiveKey> ownKeyAt(HivePlace place, const Search& search) const;
  [[nodiscard]] std::optional<HiveSubkey> subkeyNamed(HivePlace place, const Search& search) const;
  FoundSubkey given(const HiveSubkey& subkey);
  bool takeValue(HivePlace place, const TakeValue& take);
  [[nodiscard]] bool assemble(const HiveData& data);

  HiveImage image;
  std::vector<bool> visited;  // nodes, by place / 8
  // What an honest hive of this size can still hold: entries of subkey lists, values, their bytes,
  // and parts of large ones.
  std::size_t entriesLeft;
  std::size_t valuesLeft;
  std::size_t bytesLeft;
  std::size_t partsLeft;
  // How many marks searches may still look at; after that all subkeys are read instead.
  std::size_t marksLeft;
  std::vector<HiveList> spareLeaves;  // memory, kept from one list to the next
  std::vector<std::byte> assembled;   // a large value
};

}  // namespace zelvreg::machine

#endif
