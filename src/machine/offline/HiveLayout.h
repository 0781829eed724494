// Where Windows is stricter about a hive file than libhivex, which writes it: large values lie in
// parts, and lists of subkeys are sorted and hashed by upper-case Unicode. Windows would not find
// what is laid out otherwise. docs/hive-format.md has the records and their sources.
#ifndef ZELVREG_MACHINE_OFFLINE_HIVE_LAYOUT_H
#define ZELVREG_MACHINE_OFFLINE_HIVE_LAYOUT_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <set>
#include <vector>

namespace zelvreg::machine {

// Notes while a hive is changed what has to be laid out anew once it is written. Nodes and value
// records are offsets in the file.
class HiveLayout {
 public:
  // Whether this hive keeps large values in parts, as its version says: those of the machine do
  // since Windows XP. Throws MachineError if the file cannot be read.
  static bool hasPartsOfLargeValues(const std::filesystem::path& file);
  // Whether a value of this many bytes is one.
  static bool isLarge(std::size_t size);
  // How many bytes it must be given in one piece, so that there is room for its parts later.
  static std::size_t sizeInOneCell(std::size_t size);

  void noteNewSubkey(std::uint32_t parent) { parents.insert(parent); }
  // A value that was written with sizeInOneCell(size) bytes.
  void noteLargeValue(std::uint32_t node, std::size_t record, std::size_t size) {
    largeValues.push_back({node, record, size});
  }

  // Lays out the written file. Throws MachineError.
  void apply(const std::filesystem::path& file) const;

 private:
  struct LargeValue {
    std::uint32_t node;
    std::size_t record;
    std::size_t size;
  };
  std::set<std::uint32_t> parents;
  std::vector<LargeValue> largeValues;
};

}  // namespace zelvreg::machine

#endif
