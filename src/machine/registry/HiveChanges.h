// What has been done to a registry that comes from hive files, since they were read: noted as it
// happens, so that nothing needs to be compared when it is saved.
#ifndef ZELVREG_MACHINE_REGISTRY_HIVE_CHANGES_H
#define ZELVREG_MACHINE_REGISTRY_HIVE_CHANGES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "machine/registry/RegistryKey.h"

namespace zelvreg::machine {

// What must be done to one hive file, in this order, so that it holds what the registry holds. Keys
// belong to the registry.
struct HivePlan {
  HiveFile* hive = nullptr;
  std::vector<RegistryKey*> erased;   // keys of the hive that go with all below them
  std::vector<RegistryKey*> added;    // to be made with all below them; the hive has their parents
  std::vector<RegistryKey*> changed;  // keys of the hive whose values are others now
};

class HiveChanges {
 public:
  void noteMade(RegistryKey& key) { note(key, Kind::Made); }
  void noteErased(RegistryKey& key) { note(key, Kind::Erased); }
  void noteValues(RegistryKey& key) { note(key, Kind::Values); }

  // Keys that come and go only because a built-in link was tied are no changes: what was noted
  // since size() was taken is dropped.
  [[nodiscard]] std::size_t size() const { return notes.size(); }
  void shrinkTo(std::size_t earlierSize) { notes.resize(earlierSize, {}); }

  // One plan for each hive that must be written. What was made and erased again is in none.
  [[nodiscard]] std::vector<HivePlan> plans() const;
  // One line for each place whose changes are in no plan, since no hive can take them.
  [[nodiscard]] std::vector<std::string> homeless() const;

  // After this hive was written.
  void forget(const HiveFile& hive);
  void clear() { notes.clear(); }

 private:
  enum class Kind : std::uint8_t { Made, Erased, Values };
  struct Note {
    RegistryKey* key;
    Kind kind;
  };
  void note(RegistryKey& key, Kind kind);

  std::vector<Note> notes;
};

}  // namespace zelvreg::machine

#endif
