// The connection to the system's management service, for Windows.
#ifndef ZELVREG_KEYS_MANAGEMENT_SERVICE_H
#define ZELVREG_KEYS_MANAGEMENT_SERVICE_H

#include <windows.h>

// This one needs the one before.
#include <wbemidl.h>

#include "keys/ComSupport.h"

namespace zelvreg {

// A name space of the service; null where it cannot be reached. The thread must have been
// initialised for components. `context` may be null.
ComPointer<IWbemServices> connectManagementService(const wchar_t* nameSpace,
                                                   IWbemContext* context = nullptr);

// Lets the service act on this object with the rights of the user. Without this it only learns who
// the user is, and its providers refuse to work. Enumerators that it returns need this too.
void lendRightsOfUser(IUnknown& object);

}  // namespace zelvreg

#endif
