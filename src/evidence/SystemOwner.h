// Whether a key belongs to Windows itself.
#ifndef ZELVREG_EVIDENCE_SYSTEM_OWNER_H
#define ZELVREG_EVIDENCE_SYSTEM_OWNER_H

#include "keys/WideKey.h"

namespace zelvreg {

// Whether the owner of an open key is the service that installs the parts of Windows. False if that
// cannot be found out, as without the right READ_CONTROL.
bool isOwnedBySystem(const WideKey& key);

}  // namespace zelvreg

#endif
