// Whether a key belongs to Windows itself.
#ifndef ZELVREG_EVIDENCE_SYSTEM_OWNER_H
#define ZELVREG_EVIDENCE_SYSTEM_OWNER_H

#include "evidence/TruePlaces.h"

namespace zelvreg {

// Whether the owner of a key is the service that installs the parts of Windows. False if that
// cannot be found out.
bool isOwnedBySystem(const TruePlace& key);

}  // namespace zelvreg

#endif
