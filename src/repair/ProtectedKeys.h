// The keys that no repair deletes, whatever a row asks for: those that contain the records of other
// programs, and all keys above them. Otherwise the repair of a record with an empty name would
// delete all other records too.
#ifndef ZELVREG_REPAIR_PROTECTED_KEYS_H
#define ZELVREG_REPAIR_PROTECTED_KEYS_H

#include <string>

#include "roots/Roots.h"

namespace zelvreg {

// Whether deleting this key with everything below it would delete a key that the scanners walk.
// Both views, every spelling of a path, the classes of the machine, of a user and of the merged
// root, and each control set count as the same. Records below such a key are not protected.
bool isProtectedKey(HiveHandle hive, const std::string& key);

}  // namespace zelvreg

#endif
