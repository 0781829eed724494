#include "evidence/SystemOwner.h"

#include <array>
#include <cstring>

#include "keys/RootHandles.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// "S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464", as the system derives it from
// the name of the service "TrustedInstaller".
constexpr std::array<DWORD, 6> installerService{80,         956008885,  3418522649,
                                                1831038044, 1853292631, 2271478464};
constexpr std::size_t sidHeader = 8;  // revision, count, and six bytes of the authority

bool isInstallerService(PSID sid) {
  std::array<BYTE, sidHeader + sizeof(installerService)> expected{
      1, static_cast<BYTE>(installerService.size()), 0, 0, 0, 0, 0, 5};
  std::memcpy(expected.data() + sidHeader, installerService.data(), sizeof(installerService));
  return EqualSid(sid, expected.data()) != FALSE;
}

}  // namespace

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
  return isRead && owner != nullptr && isInstallerService(owner);
}

}  // namespace zelvreg
