// Importing a file in the registry editor's export format.
#ifndef ZELVREG_KEYS_REGISTRY_IMPORT_H
#define ZELVREG_KEYS_REGISTRY_IMPORT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace zelvreg {

// What an import did. The counts are of what was carried out; a key counts once per block.
struct RegistryImport {
  bool isDone = false;  // all of it
  std::string message;  // one line: what was done, or what was wrong and where
  std::size_t keys = 0;
  std::size_t valuesSet = 0;
  std::size_t valuesDeleted = 0;
  std::size_t keysDeleted = 0;
  std::size_t listsSet = 0;  // access lists that were another since
};

// Applies the text of such a file (UTF-16LE or UTF-8, or REGEDIT4 in the code page) to the 64-bit
// view of the registry. It is read whole before the first change: with a fault in it nothing is
// changed. What the registry then refuses is told and passed over, so that the rest comes back.
// Deleting what is not there counts as done. A safety export also brings back owners, access lists
// and the order of values, and is let in by the privileges for that where lists would refuse it.
RegistryImport importRegistryText(std::string_view bytes);

// The same for a file.
RegistryImport importRegistryFile(const std::string& path);

}  // namespace zelvreg

#endif
