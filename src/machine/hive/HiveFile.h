// A registry hive file, read through libhivex: its keys and values on demand, damage and hostile
// content answered by absence, and named. The file is opened for reading only.
#ifndef ZELVREG_MACHINE_HIVE_HIVE_FILE_H
#define ZELVREG_MACHINE_HIVE_HIVE_FILE_H

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "machine/base/PlainFile.h"
#include "machine/hive/HiveNames.h"

struct hive_h;

namespace zelvreg::machine {

// A value as the hive holds it; name and bytes live until the callback returns.
struct HiveValue {
  std::string_view name;  // as subkeys have theirs
  DWORD type;
  std::span<const std::byte> bytes;
};

class HiveFile {
 public:
  using TakeSubkey = std::function<void(std::string_view name, std::uint32_t node)>;
  using TakeValue = std::function<void(const HiveValue& value)>;

  // Throws MachineError, one line with the path and the reason, if libhivex cannot open the file
  // or if it has no root key.
  explicit HiveFile(std::filesystem::path hiveFile);
  ~HiveFile();
  HiveFile(const HiveFile&) = delete;
  HiveFile& operator=(const HiveFile&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return file; }
  [[nodiscard]] std::uint32_t root() const { return rootNode; }

  // Each subkey or value of a node that can be read, in the order of the hive, names in UTF-8 that
  // keeps halves of characters.
  // Every node is given once in the life of this object, so a list that leads back to a key above
  // ends there; values end where there are more than a file of this size can truly hold. Ask for
  // each node once. False if anything was passed over.
  bool subkeys(std::uint32_t node, const TakeSubkey& take);
  bool values(std::uint32_t node, const TakeValue& take);

  // What was passed over, one line each with the file in front; of many, the first few. A hive with
  // any must not be written: what was passed over would be lost.
  [[nodiscard]] const std::vector<std::string>& damage() const { return damageLines; }
  // `line` says which key has not been read whole.
  void noteDamage(std::string line);

  // Whether the file on the disk is still the one that was opened, by its place, size and time.
  [[nodiscard]] bool isAsOpened() const { return stampOf(file) == readStamp; }
  [[nodiscard]] const FileStamp& stamp() const { return readStamp; }
  // After this program has put another file in its place, in which every node that was read has
  // kept its number. What is read from now on still comes from the file that was opened.
  void noteReplaced() { readStamp = stampOf(file); }

  // How many values the node says it has.
  [[nodiscard]] std::size_t valueCount(std::uint32_t node) const;

 private:
  [[nodiscard]] bool firstVisit(std::size_t offset);
  [[nodiscard]] bool spend(std::size_t& budget, std::size_t amount);

  std::filesystem::path file;
  HiveNames names;
  hive_h* hive = nullptr;
  FileStamp readStamp{};
  std::uint32_t rootNode = 0;
  std::vector<bool> visited;  // nodes, by offset in the file / 4
  // What an honest file of this size can still hold: entries of subkey lists, values, their bytes.
  std::size_t entriesLeft = 0;
  std::size_t valuesLeft = 0;
  std::size_t bytesLeft = 0;
  std::vector<std::string> damageLines;
};

}  // namespace zelvreg::machine

#endif
