// Deleting keys and values directly.
#ifndef ZELVREG_KEYS_DELETION_H
#define ZELVREG_KEYS_DELETION_H

#include <windows.h>

#include <string>

#include "roots/Roots.h"

namespace zelvreg {

// Delete a subkey, or a value, of a key in the 64-bit view. What is not there counts as deleted.
// The result is 0, 99 for a refused hive text, or the failing call's code. The opened key is
// abandoned (keys/OpenPair.h). On an INI file fDeleteValue empties the line of that name and gives
// 0.
LONG fDeleteKey(const std::string& hive, const std::string& parentKey, const std::string& subKey);
LONG fDeleteValue(const std::string& hive, const std::string& key, const std::string& valueName);

// Deletes all that lies under `key`, in the 64-bit view; the key itself stays.
void DeleteSubtree(HiveHandle hive, const std::string& key);
// Deletes `key` with all that lies under it. One backslash at its end is dropped.
void DeleteRegistryTree(HiveHandle hive, std::string key);

}  // namespace zelvreg

#endif
