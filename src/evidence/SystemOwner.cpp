#include "evidence/SystemOwner.h"

#include <array>

#include "keys/RootHandles.h"
#include "runtime/SystemSids.h"
#include "text/Wide.h"

namespace zelvreg {
bool isOwnedBySystem(const TruePlace& key) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(systemKey(key.hive), wideText(key.path), 0, READ_CONTROL | KEY_WOW64_64KEY,
                    &opened) != ERROR_SUCCESS) {
    return false;
  }
  alignas(DWORD) std::array<BYTE, 256> descriptor{};
  auto size = static_cast<DWORD>(descriptor.size());
  PSID owner = nullptr;
  BOOL isDefault = FALSE;
  const bool isRead = RegGetKeySecurity(opened, OWNER_SECURITY_INFORMATION, descriptor.data(),
                                        &size) == ERROR_SUCCESS &&
                      GetSecurityDescriptorOwner(descriptor.data(), &owner, &isDefault) != FALSE;
  RegCloseKey(opened);
  return isRead && owner != nullptr &&
         isSid(static_cast<const BYTE*>(owner), installerOfWindowsSid);
}

}  // namespace zelvreg
