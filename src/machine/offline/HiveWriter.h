// A hive file opened for a new one: changed in memory through libhivex and written out to another
// file. The file it was opened from is never written.
#ifndef ZELVREG_MACHINE_OFFLINE_HIVE_WRITER_H
#define ZELVREG_MACHINE_OFFLINE_HIVE_WRITER_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>

#include "machine/offline/HiveLayout.h"
#include "machine/registry/RegistryKey.h"

struct hive_h;

namespace zelvreg::machine {

// Nodes are those of HiveFile. Every failure is a MachineError that says only what is wrong; the
// caller knows the key and the file.
class HiveWriter {
 public:
  explicit HiveWriter(const std::filesystem::path& file);
  ~HiveWriter();
  HiveWriter(const HiveWriter&) = delete;
  HiveWriter& operator=(const HiveWriter&) = delete;

  // The key with all below it; not the root.
  void eraseKey(std::uint32_t node);
  // A key without values; the node must have no subkey of this name. Gives its node.
  std::uint32_t addKey(std::uint32_t parent, std::u16string_view name);
  // Replaces all values of a key. Whether that changed anything. Refuses if one that is there
  // cannot be read, since it would be lost.
  bool setValues(std::uint32_t node, const ValueList& values);

  // Writes the new hive over a file that is there.
  void write(const std::filesystem::path& file);

 private:
  [[nodiscard]] bool hasJust(std::uint32_t node, const ValueList& values) const;

  hive_h* hive = nullptr;
  bool partsLargeValues = false;
  HiveLayout layout;
};

}  // namespace zelvreg::machine

#endif
