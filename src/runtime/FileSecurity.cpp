#include "runtime/FileSecurity.h"

#include "text/Wide.h"

namespace zelvreg {

std::vector<BYTE> fileSecurity(const std::string& path, SECURITY_INFORMATION what) {
  const Wide widePath(path);
  DWORD size = 0;
  GetFileSecurityW(widePath.get(), what, nullptr, 0, &size);
  std::vector<BYTE> descriptor(size);
  if (size == 0 ||
      GetFileSecurityW(widePath.get(), what, descriptor.data(), size, &size) == FALSE) {
    return {};
  }
  return descriptor;
}

bool setFileSecurity(const std::string& path, SECURITY_INFORMATION what,
                     PSECURITY_DESCRIPTOR descriptor) {
  return SetFileSecurityW(Wide(path).get(), what, descriptor) != FALSE;
}

}  // namespace zelvreg
