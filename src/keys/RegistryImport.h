// Importing a file in the registry editor's export format.
#ifndef ZELVREG_KEYS_REGISTRY_IMPORT_H
#define ZELVREG_KEYS_REGISTRY_IMPORT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace zelvreg {

// What is wrong with a file that is there and cannot be read.
inline constexpr const char* unreadFileMessage = "The file cannot be read. Nothing was changed.";

// What an import did. Only what was done is counted; a key counts once for each block of the file.
struct RegistryImport {
  bool isDone = false;  // all of it
  std::string message;  // one line: what was done, or what was wrong and where
  std::size_t keys = 0;
  std::size_t valuesSet = 0;
  std::size_t valuesDeleted = 0;
  std::size_t keysDeleted = 0;
  std::size_t listsSet = 0;  // access lists that had changed
};

// Applies the text of such a file (UTF-16LE or UTF-8, or REGEDIT4 in the code page) to the 64-bit
// view of the registry. It is read whole before the first change: if it has a fault, nothing is
// changed. What the registry refuses is reported and skipped, so that the rest is restored.
// Deleting what is not there counts as done. A safety export also restores owners, access lists and
// the order of values, and uses the privileges for that where lists would refuse.
RegistryImport importRegistryText(std::string_view bytes);

// The identifier of the user whose HKEY_CURRENT_USER such a text has the keys of; empty if it does
// not say so. Another user than the current one gets them back in HKEY_USERS, if they are there.
std::string userOfRegistryText(std::string_view bytes);

// The same as importRegistryText for a file.
RegistryImport importRegistryFile(const std::string& path);

}  // namespace zelvreg

#endif
