#include "keys/ManagementService.h"

// This one needs those before.
#include <objbase.h>

namespace zelvreg {

ComPointer<IWbemServices> connectManagementService(const wchar_t* nameSpace,
                                                   IWbemContext* context) {
  void* made = nullptr;
  if (FAILED(CoCreateInstance(CLSID_WbemLocator, nullptr, CLSCTX_INPROC_SERVER, IID_IWbemLocator,
                              &made))) {
    return nullptr;
  }
  const ComPointer<IWbemLocator> locator(static_cast<IWbemLocator*>(made));
  IWbemServices* connected = nullptr;
  if (FAILED(locator->ConnectServer(ComText(nameSpace).get(), nullptr, nullptr, nullptr, 0, nullptr,
                                    context, &connected))) {
    return nullptr;
  }
  ComPointer<IWbemServices> services(connected);
  lendRightsOfUser(*services);
  return services;
}

void lendRightsOfUser(IUnknown& object) {
  // An object within the process has no such setting and needs none.
  CoSetProxyBlanket(&object, RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr, RPC_C_AUTHN_LEVEL_CALL,
                    RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE);
}

}  // namespace zelvreg
