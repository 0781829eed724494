// The new file of a hive with changed keys, before it takes the old one's place.
#ifndef ZELVREG_MACHINE_PREPARED_HIVE_H
#define ZELVREG_MACHINE_PREPARED_HIVE_H

#include <cstdint>
#include <optional>
#include <unordered_map>

#include "machine/AtomicFile.h"
#include "machine/HiveChanges.h"

namespace zelvreg::machine {

class HiveWriter;

// Several can be prepared before the first is put in place.
class PreparedHive {
 public:
  // Writes the new file beside the hive, and reads it again to see that it holds what it should.
  // Nothing is written if the hive has all of it already. Throws MachineError, one line with the
  // file and the key; nothing is left behind then.
  explicit PreparedHive(HivePlan plan);

  // Puts the new file in place; the old one becomes FILE.bak. At each moment one of the two has the
  // hive's name. The keys that were added are keys of the hive from then on. Throws MachineError;
  // the old file stands then.
  void replace();

  [[nodiscard]] const HiveFile& hive() const { return *plan.hive; }

 private:
  void change(HiveWriter& writer);
  void add(HiveWriter& writer, std::uint32_t parent, RegistryKey& key);
  void check(const std::filesystem::path& written) const;

  HivePlan plan;
  bool isChanged = false;
  std::unordered_map<RegistryKey*, std::uint32_t> newNodes;
  std::optional<AtomicFile> backup;
  std::optional<AtomicFile> file;
};

}  // namespace zelvreg::machine

#endif
