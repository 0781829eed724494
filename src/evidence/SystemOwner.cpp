#include "evidence/SystemOwner.h"

#include "runtime/SystemSids.h"

namespace zelvreg {

bool isOwnedBySystem(const WideKey& key) {
  std::vector<BYTE> descriptor = key.security(OWNER_SECURITY_INFORMATION);
  PSID owner = nullptr;
  BOOL isDefault = FALSE;
  return !descriptor.empty() &&
         GetSecurityDescriptorOwner(descriptor.data(), &owner, &isDefault) != FALSE &&
         owner != nullptr && isSid(static_cast<const BYTE*>(owner), installerOfWindowsSid);
}

}  // namespace zelvreg
