// Owner, group and access list of a key, exported and restored as a self-relative security
// descriptor.
#ifndef ZELVREG_KEYS_KEY_SECURITY_H
#define ZELVREG_KEYS_KEY_SECURITY_H

#include <windows.h>

#include <string>
#include <vector>

#include "roots/Roots.h"

namespace zelvreg {

// Whether these bytes are such a descriptor and hold each of its parts whole, so that they can be
// passed to the system.
bool isWholeDescriptor(const std::vector<BYTE>& bytes);

// What restoreSecurity has found or done.
enum class SecurityRestore { WasSo, Done, Refused };

// Gives a key of the 64-bit view the owner, group and list of `descriptor`, which must be whole. If
// the key's list refuses that and RestorePrivileges are in force, ownership is taken first.
SecurityRestore restoreSecurity(HiveHandle hive, const std::u16string& path,
                                const std::vector<BYTE>& descriptor);

}  // namespace zelvreg

#endif
