// Owner, group and access list of a key as they go out of the registry and come back: a security
// descriptor of the system in its form without pointers.
#ifndef ZELVREG_KEYS_KEY_SECURITY_H
#define ZELVREG_KEYS_KEY_SECURITY_H

#include <windows.h>

#include <string>
#include <vector>

#include "roots/Roots.h"

namespace zelvreg {

// Whether these bytes are such a descriptor and each of its parts lies whole within them, so that
// the system can be given them.
bool isWholeDescriptor(const std::vector<BYTE>& bytes);

// What restoreSecurity has found or done.
enum class SecurityRestore { WasSo, Done, Refused };

// Gives a key of the 64-bit view back what `descriptor` says, which must be whole. Whom the key's
// list keeps out becomes its owner for that while, if RestorePrivileges are in force.
SecurityRestore restoreSecurity(HiveHandle hive, const std::u16string& path,
                                const std::vector<BYTE>& descriptor);

}  // namespace zelvreg

#endif
