// The new file of a hive with changed keys, before it takes the old one's place.
#ifndef ZELVREG_MACHINE_OFFLINE_PREPARED_HIVE_H
#define ZELVREG_MACHINE_OFFLINE_PREPARED_HIVE_H

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "machine/base/AtomicFile.h"
#include "machine/registry/HiveChanges.h"

namespace zelvreg::machine {

class HiveWriter;

// Several can be prepared before the first is put in place.
class PreparedHive {
 public:
  // Writes the new file beside the hive, and reads it again to see that it holds what it should.
  // Nothing is written if the hive has all of it already. Throws MachineError, one line with the
  // file and the key; no file is left over then.
  explicit PreparedHive(HivePlan plan);

  // The new file; none if the hive has all of it already.
  [[nodiscard]] AtomicFile* file() { return newFile ? &*newFile : nullptr; }
  // After the new file was put in place: the keys that were added are keys of the hive from then
  // on.
  void wasReplaced();

  [[nodiscard]] const HiveFile& hive() const { return *plan.hive; }

 private:
  void addNew(RegistryKey& key);
  // Sets isChanged and newNodes.
  void writeApart(const std::filesystem::path& beside);
  void change(HiveWriter& writer);
  void check(const std::filesystem::path& written) const;
  [[nodiscard]] std::uint32_t nodeOf(const RegistryKey& key) const;

  HivePlan plan;
  bool isChanged = false;
  std::vector<RegistryKey*> newKeys;  // each after its parent
  std::unordered_map<const RegistryKey*, std::uint32_t> newNodes;
  std::optional<AtomicFile> newFile;
};

}  // namespace zelvreg::machine

#endif
